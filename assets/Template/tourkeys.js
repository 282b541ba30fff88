'use strict';

/**
 * The tour's keyboard shortcuts, for the frameset and for every page in it: which step ('next' or 'previous')
 * a key press asks for, or null. Keys that move the caret in a field stay with the field.
 */
function tourStepOfKey(event) {
  const steps = { ArrowRight: 'next', ArrowLeft: 'previous' };
  const withModifier = event.altKey || event.ctrlKey || event.metaKey || event.shiftKey;
  const inField = event.target instanceof Element
    && event.target.closest('input, select, textarea, audio, video, [contenteditable]');
  if (event.defaultPrevented || withModifier || inField)
    return null;
  return steps[event.key] || null;
}
