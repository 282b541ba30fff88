'use strict';

/**
 * What the site frame shows until the page of a stop is there: its address stands behind the "?" of this page's own,
 * and this page replaces itself with it. So no page ever stays on screen under the words of another stop, whatever
 * becomes of the next one. Outside a tour nothing is opened: nobody shall lead people astray in the tour's name.
 */
(() => {
  const patience = 6000; // From then on it is said that the page may not come.
  const text = decodeURIComponent(location.search.slice(1));

  function pageAddress() {
    try {
      const address = new URL(text);
      return ['http:', 'https:', 'file:'].includes(address.protocol) ? address : null;
    } catch (error) {
      return null;
    }
  }

  /** Why the browser would leave this page standing; empty when nothing is known to be in the way. */
  function obstacle(address) {
    const isLoopback = /^(localhost|127(\.\d+){3}|\[::1\])$/.test(address?.hostname);
    if (!address)
      return 'none';
    if (address.protocol === 'file:' && location.protocol !== 'file:')
      return 'file';
    return location.protocol === 'https:' && address.protocol === 'http:' && !isLoopback ? 'insecure' : '';
  }

  function say(sentence) {
    document.getElementById('waiting').textContent = tourLanguage.say(sentence);
  }

  function describe(address) {
    const link = document.querySelector('.buttons a');
    document.getElementById('host').textContent = address?.host || address?.pathname.split('/').pop() || tourLanguage.say('noPage');
    link.parentNode.hidden = !address;
    link.href = address ? address.href : '';
    link.target = '_blank';
    link.rel = 'noopener';
    link.textContent = tourLanguage.say('openTab');
  }

  /** The next page that has loaded in the frame is to be another one than this. */
  function tellLeaving() {
    if (document.readyState === 'complete')
      parent.postMessage({ tour: 'leaving' }, '*');
    else
      addEventListener('load', () => setTimeout(tellLeaving));
  }

  function show() {
    const address = pageAddress();
    const inTheWay = obstacle(address);
    document.body.classList.add('waiting');
    describe(address);
    say(inTheWay || 'opens');
    parent.postMessage({ tour: 'waiting', address: text }, '*');
    if (inTheWay)
      return;
    setTimeout(say, patience, 'slow');
    // Once this page has been drawn; an invisible window draws none.
    let gone = false;
    const giveWay = () => {
      if (gone)
        return;
      gone = true;
      tellLeaving();
      location.replace(address.href);
    };
    requestAnimationFrame(() => setTimeout(giveWay));
    setTimeout(giveWay, 200);
  }

  if (parent !== self)
    document.addEventListener('DOMContentLoaded', show);
})();
