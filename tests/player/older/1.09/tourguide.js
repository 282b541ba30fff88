'use strict';

/** The tour guide: all narrations of the tour on one page, to read or to print. */
(() => {
  function markStopHeadings() {
    for (const title of document.querySelectorAll('main > p > b:first-child > font[color="#CC0000" i]')) {
      title.closest('p').setAttribute('role', 'heading');
      title.closest('p').setAttribute('aria-level', '2');
    }
  }

  /** Narrations link to sub-stops through this function; here it simply opens the page. */
  self.loadSubStop = (address) => {
    if (address)
      location.assign(new URL(address, location.href).href);
  };

  tourPage.documentReady.then(() => {
    markStopHeadings();
    document.getElementById('print')?.addEventListener('click', () => print());
  });
})();
