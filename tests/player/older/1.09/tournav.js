'use strict';

/** The navigator: the buttons of the tour. Its status text is where the stop that is shown announces itself. */
(() => {
  function isUsable(step, state) {
    if (step === 'next')
      return state.stop < state.stopCount;
    return step === 'previous' ? state.stop > 0 : true;
  }

  // Buttons stay focusable while they cannot be used, so that the keyboard does not lose its place at the last
  // stop.
  function show(state) {
    for (const button of document.querySelectorAll('[data-go]'))
      button.setAttribute('aria-disabled', String(!isUsable(button.dataset.go, state)));
    const position = document.getElementById('position');
    if (position)
      position.textContent = state.stop > 0 ? `${state.stop} of ${state.stopCount}` : 'Start';
  }

  function press(event) {
    const button = event.target.closest('[data-go]');
    if (button && button.getAttribute('aria-disabled') !== 'true')
      tourPage.tell({ tour: 'go', to: button.dataset.go });
  }

  document.addEventListener('click', press);
  tourPage.hear('state', show);
  tourPage.hear('status', (message) => {
    window.status = message.text;
  });
})();
