'use strict';

/** The words in the narration frame before the first stop, and below a page that is tested in a frame. */
(() => {
  const say = (word) => { document.getElementById('invitation').innerHTML = tourLanguage.say(word); };

  tourPage.tell({ tour: 'opening' });
  if (window.name === 'bw')
    tourPage.documentReady.then(() => say('test'));
  tourPage.hear('state', (state) => {
    say(state.stopCount > 0 ? 'ready' : 'noStops');
  });
})();
