'use strict';

/** The words in the narration frame before the first stop. */
(() => {
  const sentences = {
    ready: 'Choose <strong>Next</strong> to begin the tour, or press the <kbd>Right arrow</kbd> key.',
    empty: 'This tour has no stops yet.',
  };

  tourPage.tell({ tour: 'opening' });
  tourPage.hear('state', (state) => {
    document.getElementById('invitation').innerHTML = state.stopCount > 0 ? sentences.ready : sentences.empty;
  });
})();
