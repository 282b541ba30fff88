'use strict';

/**
 * The contents page: a box that looks for stops by their titles and words, and marks at the stops that were visited.
 * The words of all stops stand in the tour guide, which is read when somebody types.
 */
(() => {
  const stopOfLink = (link) => Number(/^page(\d+)\.htm$/.exec(link.getAttribute('href'))?.[1] || 0);
  let links = [];
  let words = []; // Of each stop, in small letters, as far as the guide has told them.
  let guide = null;

  /** "Stop 3" in the tour's language, and the title apart from it, which may be in a language of another direction. */
  function nameLink(link) {
    const text = document.createTreeWalker(link, NodeFilter.SHOW_TEXT).nextNode();
    const [beginning] = /^Stop \d+\u2014/.exec(text?.data) || [];
    if (!beginning)
      return;
    const name = `${tourLanguage.say('stopNumber', { n: stopOfLink(link) })}\u2014`;
    if (text.parentNode !== link) {
      text.data = name + text.data.slice(beginning.length);
      return;
    }
    const title = document.createElement('span');
    title.dir = 'auto';
    text.data = text.data.slice(beginning.length);
    title.append(...link.childNodes);
    link.append(name, title);
  }

  function titleOf(link) {
    return link.textContent.replace(/\s+/g, ' ').trim().replace(/^Stop \d+\s*\u2014/, '');
  }

  /** Words of a stop that hold all that is looked for, in any order. */
  function isFound(link, wanted) {
    const text = `${link.textContent} ${words[stopOfLink(link) - 1] || ''}`.toLowerCase();
    return wanted.every((word) => text.includes(word));
  }

  function look(box, count) {
    const wanted = box.value.toLowerCase().split(/\s+/).filter(Boolean);
    for (const link of links)
      link.hidden = !isFound(link, wanted);
    const found = links.filter((link) => !link.hidden).length;
    count.textContent = tourLanguage.say(wanted.length > 0 ? 'stopsFound' : 'stopsAll', { n: found, m: links.length });
  }

  /** Loads the guide in an invisible frame; it tells its words when it has been read. */
  function readGuide(changed) {
    if (guide)
      return;
    guide = document.createElement('iframe');
    guide.hidden = true;
    guide.title = 'Tour guide';
    guide.src = 'tguide.htm#words';
    addEventListener('message', (event) => {
      if (event.source !== guide.contentWindow || event.data?.tour !== 'words')
        return;
      words = Array.from(event.data.words, (text) => String(text ?? '').toLowerCase());
      changed();
    });
    document.body.append(guide);
  }

  function addBox() {
    const label = document.createElement('label');
    const box = document.createElement('input');
    const count = document.createElement('p');
    box.type = 'search';
    box.autocomplete = 'off';
    count.setAttribute('role', 'status');
    label.append(tourLanguage.say('lookFor'), box);
    const holder = document.createElement('div');
    holder.className = 'filter';
    holder.append(label, count);
    links[0].before(holder);
    const looked = () => look(box, count);
    box.addEventListener('input', () => {
      readGuide(looked);
      looked();
    });
    looked();
  }

  function markVisited({ visited = [] }) {
    for (const link of links) {
      const isVisited = visited.includes(stopOfLink(link));
      link.classList.toggle('visited', isVisited);
      link.title = isVisited ? tourLanguage.say('visited') : '';
    }
  }

  function showCurrent({ stop }) {
    links.find((link) => stopOfLink(link) === stop)?.scrollIntoView({ block: 'center' });
  }

  tourPage.documentReady.then(() => {
    // A title whose mark-up is not closed wraps the links that follow it.
    links = [...document.querySelectorAll('main a[href]')].filter((link) => stopOfLink(link) > 0);
    tourPage.tell({ tour: 'titles', titles: links.map(titleOf) });
    links.forEach(nameLink);
    if (links.length > 0)
      addBox();
  });
  tourPage.hear('state', markVisited);
  tourPage.hear('state', showCurrent);
})();
