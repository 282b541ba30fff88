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
    for (const link of document.querySelectorAll('[data-needs-stops]'))
      link.hidden = state.stopCount < 1;
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

  function pressKey(event) {
    const step = inTour && tourStepOfKey(event);
    if (!step)
      return;
    event.preventDefault();
    tell({ tour: 'go', to: step });
  }

  addEventListener('message', receive);
  addEventListener('keydown', pressKey);
  hear('state', enterTour);
  hear('state', markCurrentStop);
  // The answer to the greeting must find every script of the page in place.
  documentReady.then(() => {
    setTitle();
    tell({ tour: 'hello' });
  });

  return { tell, hear, documentReady, isInTour: () => inTour };
})();
