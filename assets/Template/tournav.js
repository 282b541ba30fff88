'use strict';

/** The navigator: the buttons of the tour. Its status text is where the stop that is shown announces itself. */
(() => {
  const part = (id) => document.getElementById(id);

  function isUsable(step, state) {
    if (step === 'next')
      return state.stop < state.stopCount;
    return step === 'previous' ? state.stop > 0 : true;
  }

  /** Puts text into a part of the navigator that an author may have taken out, and shows it if there is text. */
  function fill(id, text) {
    const element = part(id);
    if (!element)
      return;
    if (element.textContent !== text)
      element.textContent = text;
    element.hidden = !text;
  }

  // Buttons stay focusable while they cannot be used, so that the keyboard does not lose its place at the last
  // stop.
  function showButtons(state) {
    for (const button of document.querySelectorAll('[data-go]'))
      button.setAttribute('aria-disabled', String(!isUsable(button.dataset.go, state)));
    const open = part('open-page');
    if (open) {
      open.hidden = !isPageAddress(state.address);
      open.href = state.address;
    }
  }

  function comingText({ stop, stopCount, nextTitle }) {
    if (stopCount > 0 && stop === stopCount)
      return tourLanguage.say('lastStop');
    return nextTitle ? tourLanguage.say('coming', { title: nextTitle }) : '';
  }

  function spokenText({ stop, stopCount, title }) {
    const place = tourLanguage.say(stop > 0 ? 'spoken' : 'spokenStart', { n: stop, m: stopCount });
    return stop > 0 && title ? `${place}: ${title}` : place;
  }

  function show(state) {
    const { stop, stopCount } = state;
    showButtons(state);
    fill('position', tourLanguage.say(stop > 0 ? 'position' : 'start', { n: stop, m: stopCount }));
    fill('coming', comingText(state));
    fill('spoken', spokenText(state));
    const progress = part('progress');
    if (progress) {
      progress.hidden = stopCount < 1;
      progress.max = Math.max(1, stopCount);
      progress.value = stop;
    }
  }

  /** Where pages are read from right to left, the next one is on the left. */
  function mirrorKeys() {
    const opposite = { ArrowLeft: 'ArrowRight', ArrowRight: 'ArrowLeft' };
    for (const button of document.querySelectorAll('[aria-keyshortcuts]'))
      button.setAttribute('aria-keyshortcuts', opposite[button.getAttribute('aria-keyshortcuts')]);
  }

  // What is said of the stop names it; the short form would only be said beside it.
  tourPage.documentReady.then(() => {
    if (part('spoken'))
      part('position')?.removeAttribute('role');
    if (tourLanguage.isMirrored)
      mirrorKeys();
  });
  tourPage.hear('state', show);
  tourPage.hear('layout', ({ bar }) => document.documentElement.classList.toggle('bar', bar));
  tourPage.hear('status', (message) => {
    window.status = message.text;
  });
})();
