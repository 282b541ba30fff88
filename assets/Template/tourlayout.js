'use strict';

/**
 * The sizes of a tour's frames. What the author chose is the least: the row of the words grows with them, up to a part
 * of the window, and the navigator's frame holds all of its buttons. On a small screen the logo gives way and the
 * navigator lies below the words, as wide as the window. On a wide one the author may have chosen to have the words beside
 * the page, with the navigator below them. In a language that is read from right to left everything is the other way
 * round. No frame is loaded again for any of this.
 */
const tourLayout = (() => {
  const frameTitles = {
    mw: 'pageOfStop',
    logo: 'logo',
    nar: 'narration',
    nav: 'navigator',
    ahead: 'ahead',
  };
  const narrowWidth = 600;
  const lowHeight = 480;
  const mostForWords = 0.4;
  const mostForNavigator = 1 / 3;
  const border = 2;

  const leastForBeside = 1200;
  const partOfBeside = 0.3;
  const widestBeside = 560;
  const heightOfLogoBeside = 72;

  // What the pages say that they need, in pixels; first what they need in most browsers.
  const needs = { words: 0, beside: { width: 0, height: 0 }, below: 64 };
  let framesets = null;
  let least = null;
  let barIsBelow = false;
  let tellBar = () => {};

  /** Gives the frames what their generated lines lack: names for screen readers and calm borders. */
  function prepareFrames() {
    const line = getComputedStyle(document.documentElement).getPropertyValue('--line').trim();
    for (const frameset of document.querySelectorAll('frameset:not([border])')) {
      // Borders stay where frames would be that are read from left to right.
      const isRow = frameset.parentNode.localName === 'frameset' || tourChoices.layout === 'side';
      frameset.setAttribute('border', tourLanguage.isMirrored && isRow ? '0' : '2');
      frameset.setAttribute('bordercolor', line);
    }
    for (const frame of document.querySelectorAll('frame:not([data-titled])')) {
      frame.dataset.titled = '';
      if (frameTitles[frame.name])
        frame.title = tourLanguage.say(frameTitles[frame.name]);
    }
  }

  function numbersIn(text) {
    return text.split(',').map((part) => Number(part) || 0);
  }

  function isSmallScreen() {
    return innerWidth <= narrowWidth || innerHeight <= lowHeight
      || needs.beside.width > innerWidth * mostForNavigator;
  }

  /** On a small screen the page of the stop needs its part more than the words need the height that the author chose. */
  function heightOfWords() {
    const most = Math.floor(innerHeight * mostForWords);
    const wanted = Math.min(Math.max(needs.words, least.words), most);
    return barIsBelow ? wanted : Math.max(wanted, least.words);
  }

  /** Setting what is there already would lay the frames out again. */
  function set(frameset, rows, cols) {
    if (frameset.getAttribute('rows') !== rows)
      frameset.setAttribute('rows', rows);
    if (frameset.getAttribute('cols') !== cols)
      frameset.setAttribute('cols', cols);
  }

  function areWordsBeside() {
    return tourChoices.layout === 'side' && innerWidth >= leastForBeside && innerHeight > lowHeight;
  }

  function putWordsBeside({ outer, inner }) {
    const width = Math.min(Math.round(innerWidth * partOfBeside), widestBeside);
    set(outer, '*', `*,${width},0`);
    set(inner, `${least.logo > 0 ? heightOfLogoBeside : 0},*,${needs.below}`, '*');
  }

  function putWordsBelow({ outer, inner }) {
    const words = heightOfWords();
    if (barIsBelow) {
      set(outer, `*,${words + needs.below + 2 * border},0`, '*');
      set(inner, `0,*,${needs.below}`, '*');
    } else {
      set(outer, `*,${Math.max(words, needs.beside.height)},0`, '*');
      set(inner, '*', `${least.logo},*,${Math.max(least.navigator, needs.beside.width)}`);
    }
  }

  /** Framesets have no direction: what is in each is moved to where it would be in a mirror. */
  function mirrorFrames() {
    const parts = [...document.querySelectorAll('frameset > *')];
    for (const part of parts)
      part.style.transform = '';
    const distances = parts.map((part) => {
      const own = part.getBoundingClientRect();
      const around = part.parentNode.getBoundingClientRect();
      return around.left + around.right - own.left - own.right;
    });
    parts.forEach((part, index) => {
      part.style.transform = distances[index] === 0 ? '' : `translateX(${distances[index]}px)`;
    });
  }

  function fit() {
    if (!framesets)
      return;
    const isBeside = areWordsBeside();
    barIsBelow = isBeside || isSmallScreen();
    if (isBeside)
      putWordsBeside(framesets);
    else
      putWordsBelow(framesets);
    document.documentElement.classList.toggle('narrow', barIsBelow && !isBeside);
    document.documentElement.classList.toggle('beside', isBeside);
    if (tourLanguage.isMirrored)
      mirrorFrames();
    tellBar(barIsBelow);
  }

  /** Begins to size the frames, once they are parsed. `tell` hears whether the navigator is a bar below the words. */
  function begin(tell) {
    const [outer, inner] = document.querySelectorAll('frameset');
    const [, words] = numbersIn(outer.rows);
    const [logo, , navigator] = numbersIn(inner.cols);
    framesets = { outer, inner };
    least = { words, logo, navigator };
    tellBar = tell;
    // There is nothing to scroll; where pages are read from right to left, Firefox leaves room for it.
    document.documentElement.style.overflow = 'hidden';
    addEventListener('resize', fit);
    fit();
  }

  /** The narration's page says how high its words are, in pixels. */
  function wordsNeed({ height }) {
    needs.words = Math.ceil(height) || 0;
    fit();
  }

  /** The navigator says how much it needs, in pixels; `bar`: as the bar below the words. */
  function navigatorNeeds({ width, height, bar }) {
    if (bar)
      needs.below = Math.ceil(height) || needs.below;
    else
      needs.beside = { width: Math.ceil(width) || 0, height: Math.ceil(height) || 0 };
    fit();
  }

  return { prepareFrames, begin, wordsNeed, navigatorNeeds, hasBar: () => barIsBelow };
})();
