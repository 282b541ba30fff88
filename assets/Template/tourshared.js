'use strict';

/** What the frameset of a tour and the pages in it both need. */

/**
 * The keyboard shortcuts of a tour: which step ('next', 'previous', 'first', 'last', 'contents' or 'keys') a key press
 * asks for, or null. Keys that move the caret in a field stay with the field.
 */
function tourStepOfKey(event) {
  const isMirrored = document.documentElement.dir === 'rtl';
  const steps = {
    ArrowRight: isMirrored ? 'previous' : 'next',
    ArrowLeft: isMirrored ? 'next' : 'previous',
    Home: 'first',
    End: 'last',
    Escape: 'contents',
    '?': 'keys',
  };
  const withModifier = event.altKey || event.ctrlKey || event.metaKey || (event.shiftKey && event.key !== '?');
  const inField = event.target instanceof Element
    && event.target.closest('input, select, textarea, audio, video, [contenteditable]');
  if (event.defaultPrevented || withModifier || inField)
    return null;
  return steps[event.key] || null;
}

/** Whether an address is one that may be shown: never script, whoever asks for it. */
function isPageAddress(address) {
  try {
    return ['http:', 'https:', 'file:'].includes(new URL(address).protocol);
  } catch (error) {
    return false;
  }
}
