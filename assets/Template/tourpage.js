'use strict';

/**
 * What all pages of a tour share: they talk with the tour's frameset, take part in its keyboard shortcuts and
 * set their links and their title.
 *
 * From disk, browsers treat every page as a stranger to every other, so everything is said by messages. None of
 * them is secret, hence the open target: a page on disk has no origin that could be named.
 */
const tourPage = (() => {
  const frameset = parent === self ? null : parent;
  const handlers = {};
  const documentReady = new Promise((resolve) => {
    document.addEventListener('DOMContentLoaded', resolve, { once: true });
  });
  let inTour = false;

  /** Sends a message, an object whose `tour` says its kind, to the frameset around this page, if there is one. */
  function tell(message) {
    if (frameset)
      frameset.postMessage(message, '*');
  }

  /** Calls the handler for each message of this kind that the frameset sends, once the document is ready. */
  function hear(kind, handler) {
    (handlers[kind] = handlers[kind] || []).push(handler);
  }

  function receive(event) {
    if (!frameset || event.source !== frameset || !event.data)
      return;
    documentReady.then(() => {
      for (const handler of handlers[event.data.tour] || [])
        handler(event.data);
    });
  }

  function enterTour(state) {
    if (inTour)
      return;
    inTour = true;
    adaptLinks(state);
  }

  function adaptLinks(state) {
    for (const link of document.querySelectorAll('[data-tour-href]'))
      link.href = link.dataset.tourHref;
    for (const holder of document.querySelectorAll('[data-tour-target]')) {
      const links = holder.matches('a') ? [holder] : holder.querySelectorAll('a[href]');
      for (const link of links)
        link.target = holder.dataset.tourTarget;
    }
    offerStart(state);
  }

  function offerStart({ stopCount }) {
    for (const link of document.querySelectorAll('[data-needs-stops]'))
      link.hidden = stopCount < 1;
    for (const remark of document.querySelectorAll('[data-no-stops]'))
      remark.hidden = stopCount > 0;
  }

  /** Outside the tour nobody says how many stops there are: the tour is asked, in an invisible frame. */
  function askForStops() {
    const probe = document.createElement('iframe');
    addEventListener('message', (event) => {
      if (event.source !== probe.contentWindow || event.data?.tour !== 'here')
        return;
      probe.remove();
      if (Number.isInteger(event.data.stopCount))
        offerStart(event.data);
    });
    probe.hidden = true;
    probe.src = 'playtour.htm#here';
    document.body.append(probe);
  }

  function markCurrentStop(state) {
    for (const link of document.querySelectorAll('.contents a[href]')) {
      if (link.getAttribute('href') === `page${state.stop}.htm`)
        link.setAttribute('aria-current', 'step');
      else
        link.removeAttribute('aria-current');
    }
  }

  function setTitle() {
    const heading = document.querySelector('[data-page-title]');
    const text = heading ? heading.textContent.replace(/\s+/g, ' ').trim() : '';
    if (text)
      document.title = text === document.title ? text : `${text} - ${document.title}`;
  }

  /** Long pages of the site frame keep the keys that scroll to their ends. */
  function isOwnKey(step) {
    return !['first', 'last'].includes(step) || document.body.matches('.narration, .navigator, .logo');
  }

  function pressKey(event) {
    const step = inTour && tourStepOfKey(event);
    if (!step || !isOwnKey(step))
      return;
    event.preventDefault();
    tell({ tour: 'go', to: step, held: event.repeat });
  }

  function pressButton(event) {
    const button = event.target.closest('[data-go]');
    if (button && button.getAttribute('aria-disabled') !== 'true')
      tell({ tour: 'go', to: button.dataset.go });
  }

  /** Links that go on where the visitor has been the last time, if they have been anywhere. */
  function offerToGoOn({ goOn }) {
    for (const link of document.querySelectorAll('[data-go-on]')) {
      link.hidden = !goOn;
      link.href = `page${goOn}.htm`;
      link.textContent = tourLanguage.say('goOnAt', { n: goOn });
    }
  }

  /** Tells the frameset how much room the page takes, and when that changes. */
  function tellSize() {
    const measured = document.querySelector(document.body.matches('.navigator') ? 'main' : 'body');
    const isBar = () => document.documentElement.classList.contains('bar');
    new ResizeObserver(() => {
      const { width, height } = measured.getBoundingClientRect();
      tell({ tour: 'size', width, height, bar: isBar() });
    }).observe(measured);
  }

  /** A finger that goes sideways over the words turns the page. */
  function hearSwipes() {
    const leastWay = 60;
    let from = null;
    addEventListener('touchstart', ({ touches, target }) => {
      from = touches.length === 1 && !target.closest('input, audio, video, iframe') ? touches[0] : null;
    }, { passive: true });
    addEventListener('touchend', ({ changedTouches: [to] }) => {
      const x = from ? to.clientX - from.clientX : 0;
      const y = from ? to.clientY - from.clientY : 0;
      from = null;
      if (inTour && Math.abs(x) > Math.max(leastWay, 2 * Math.abs(y)) && getSelection().isCollapsed)
        tell({ tour: 'go', to: (x < 0) !== tourLanguage.isMirrored ? 'next' : 'previous' });
    }, { passive: true });
  }

  addEventListener('message', receive);
  addEventListener('keydown', pressKey);
  hear('state', enterTour);
  hear('state', markCurrentStop);
  hear('state', offerToGoOn);
  document.addEventListener('click', pressButton);
  // The answer to the greeting must find every script of the page in place.
  documentReady.then(() => {
    setTitle();
    tell({ tour: 'hello', page: location.pathname.split('/').pop() });
    if (frameset && document.body.matches('.narration, .navigator'))
      tellSize();
    if (document.body.matches('.narration'))
      hearSwipes();
    if (!frameset && document.querySelector('[data-needs-stops]'))
      askForStops();
  });

  return { tell, hear, documentReady, isInTour: () => inTour };
})();
