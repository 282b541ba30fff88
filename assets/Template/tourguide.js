'use strict';

/** The tour guide: all narrations of the tour on one page, to read or to print. */
(() => {
  const isTitle = (element) => /^\s*Stop-\d+:/.test(element.textContent);

  function markStopHeadings() {
    for (const title of document.querySelectorAll('main p > b > font[color="#CC0000" i]')) {
      if (!isTitle(title))
        continue;
      title.closest('p').setAttribute('role', 'heading');
      title.closest('p').setAttribute('aria-level', '2');
    }
  }

  /**
   * The words of each stop, for the contents page that has loaded this one to look into them. A title may hold mark-up
   * that is not closed, so they are told apart by the numbers in the text.
   */
  function tellWords() {
    const words = [];
    const texts = document.createTreeWalker(document.querySelector('main'), NodeFilter.SHOW_TEXT);
    let stop = 0;
    while (texts.nextNode()) {
      const { data, parentElement } = texts.currentNode;
      const [, number] = /^\s*Stop-(\d+):/.exec(data) || [];
      if (number && parentElement.closest('font[color="#CC0000" i]'))
        stop = Number(number);
      if (stop > 0)
        words[stop - 1] = `${words[stop - 1] || ''}${data} `;
    }
    parent.postMessage({ tour: 'words', words }, '*');
  }

  /** What the program writes before titles and names of files, in the tour's language. */
  function translate() {
    const texts = document.createTreeWalker(document.querySelector('main'), NodeFilter.SHOW_TEXT);
    while (texts.nextNode()) {
      const { currentNode } = texts;
      const color = currentNode.parentElement.closest('font[color]')?.color.toUpperCase();
      const [beginning, n] = (color === '#CC0000' && /^Stop-(\d+)/.exec(currentNode.data)) || [];
      const [line, name] = (color === '#800000' && /^Local File: (.*)$/.exec(currentNode.data)) || [];
      if (beginning)
        currentNode.data = tourLanguage.say('stopNumber', { n }) + currentNode.data.slice(beginning.length);
      else if (line)
        currentNode.data = tourLanguage.say('localFile', { name });
    }
  }

  /** Titles and narrations may be in a language of another direction. */
  function letDirectionsFollow() {
    for (const element of document.querySelectorAll('main > :not([dir], .buttons, .kicker)'))
      element.dir = 'auto';
  }

  /** Narrations link to sub-stops through this function; here it simply opens the page. */
  self.loadSubStop = (address) => {
    if (address)
      location.assign(new URL(address, location.href).href);
  };

  tourPage.documentReady.then(() => {
    markStopHeadings();
    if (location.hash === '#words' && parent !== self)
      tellWords();
    letDirectionsFollow();
    if (tourLanguage.code !== 'en')
      translate();
    document.getElementById('print')?.addEventListener('click', () => print());
  });
})();
