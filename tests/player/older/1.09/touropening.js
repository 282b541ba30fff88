'use strict';

/** The words in the narration frame before the first stop, and below a page that is tested in a frame. */
(() => {
  const sentences = {
    ready: 'Choose <strong>Next</strong> to begin the tour, or press the <kbd>Right arrow</kbd> key.',
    empty: 'This tour has no stops yet.',
    test: 'The page above is being tested: can it be shown in a frame?',
  };
  const say = (sentence) => { document.getElementById('invitation').innerHTML = sentence; };

  tourPage.tell({ tour: 'opening' });
  if (window.name === 'bw')
    tourPage.documentReady.then(() => say(sentences.test));
  tourPage.hear('state', (state) => {
    say(state.stopCount > 0 ? sentences.ready : sentences.empty);
  });
})();
