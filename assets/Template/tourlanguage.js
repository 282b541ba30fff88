'use strict';

/**
 * The language of a tour: sets language and direction of the page and shows the words that stand in it in that language.
 * What a page holds is English, so there is nothing to do in an English tour; other scripts ask say() for their words.
 */
const tourLanguage = (() => {
  const rightToLeft = ['ar', 'fa', 'he', 'ur', 'yi'];
  const english = 'en';
  const wanted = typeof tourChoices.language === 'string' ? tourChoices.language : english;
  const code = [wanted, wanted.split('-')[0], english].find((language) => tourWords[language]) || english;
  const words = tourWords[code] || {};
  const isMirrored = rightToLeft.includes(code.split('-')[0]);

  // What the program itself writes into the pages of stops; it stays English there.
  const instructions = [
    { before: 'Click the ', button: 'Next button', after: ' to go to the next stop.', word: 'nextInstruction' },
    { before: 'Click the ', button: 'Exit button', after: ' to quit this Tour.', word: 'exitInstruction' },
  ];

  /** The word of this name, which may be mark-up; parts in braces are filled with these values as they stand. */
  function say(word, values = {}) {
    return (words[word] ?? '').replace(/\{(\w+)\}/g, (part, name) => values[name] ?? part);
  }

  const attributes = { wordTitle: 'title', wordLabel: 'aria-label', wordAlt: 'alt' };

  function translateElements() {
    for (const element of document.querySelectorAll('[data-word]'))
      element.innerHTML = say(element.dataset.word) || element.innerHTML;
    for (const element of document.querySelectorAll('[data-word-title], [data-word-label], [data-word-alt]')) {
      for (const [name, attribute] of Object.entries(attributes)) {
        if (say(element.dataset[name]))
          element.setAttribute(attribute, say(element.dataset[name]));
      }
    }
  }

  function translateInstruction(strong) {
    const { before, after, word } = instructions.find(({ button }) => button === strong.textContent) || {};
    const { previousSibling, nextSibling } = strong;
    if (!word || !previousSibling?.data?.endsWith(before) || !nextSibling?.data?.startsWith(after))
      return;
    const sentence = document.createElement('span');
    sentence.dir = isMirrored ? 'rtl' : 'ltr';
    sentence.innerHTML = say(word);
    previousSibling.data = previousSibling.data.slice(0, -before.length);
    nextSibling.data = nextSibling.data.slice(after.length);
    strong.replaceWith(sentence);
  }

  function translate() {
    translateElements();
    document.querySelectorAll('.narration main strong').forEach(translateInstruction);
  }

  document.documentElement.lang = code;
  if (isMirrored)
    document.documentElement.dir = 'rtl';
  if (code !== english) {
    document.addEventListener('DOMContentLoaded', translate);
    // The editor shows what its author types.
    document.addEventListener('bodyreplaced', translate);
  }

  return { code, isMirrored, say };
})();
