'use strict';

/**
 * Where the visitor is, as the browser shows and keeps it: the stop in the address and in the title of the window, and
 * the stop to go on at another time. What is kept stays in this browser.
 */
const tourPlace = (() => {
  // The author's preview has no address that anybody shares, and the author's steps are no visit.
  const inEditor = /\/(framever|tmpframe)\.htm$/.test(location.pathname);
  const key = `tour ${new URL('.', location.href).pathname}`;
  let tourTitle = '';

  function named(stop, title) {
    return [stop > 0 && title ? `${stop}. ${title}` : '', tourTitle].filter(Boolean).join(' - ');
  }

  /** The title of the tour, as mark-up that an author may have written. */
  function readTourTitle() {
    const shown = new DOMParser().parseFromString(document.title, 'text/html').body.textContent;
    tourTitle = shown.replace(/\s+/g, ' ').trim();
    document.title = tourTitle;
  }

  function nameStop(stop, title) {
    if (!inEditor)
      document.title = named(stop, title);
  }

  /** The stop that the address names: {stop, linked}; 0 when it names none. */
  function inAddress() {
    const [, stop, linked] = /^#stop-(\d+)(-linked)?$/.exec(location.hash) || [];
    return { stop: Number(stop || 0), linked: Boolean(linked) };
  }

  /** The address of a stop; of the tour's beginning for 0. */
  function addressOf(stop) {
    const { pathname, search } = location;
    return stop > 0 ? `${pathname}${search}#stop-${stop}` : pathname + search;
  }

  /** Lets the entry in the history carry this state and the address of the stop. */
  function keep(visit) {
    history.replaceState(visit, '', inEditor ? undefined : addressOf(visit.stop));
  }

  /** Reads a home page as people write it: an address, a host without a scheme, or a file beside the tour. */
  function homeAddress(text) {
    const isFileName = /^[^/]+\.(html?|xhtml|php|aspx?|jsp|pdf|txt)([?#].*)?$/i.test(text);
    const startsWithHost = /^[\w-]+(\.[\w-]+)+(:\d+)?([/?#]|$)/.test(text) || /^[\w.-]+:\d+([/?#]|$)/.test(text);
    if (text.startsWith('//') || (startsWithHost && !isFileName))
      return `https://${text.replace(/^\/+/, '')}`;
    return new URL(text, location.href).href;
  }

  /** Where to go on; 0 when nothing is kept, or keeping is refused. */
  function keptStop() {
    try {
      return Number(localStorage.getItem(key)) || 0;
    } catch (error) {
      return 0;
    }
  }

  /** Who has seen the last stop begins anew. */
  function keepStop(stop, stopCount) {
    if (inEditor || stop < 1)
      return;
    try {
      if (stop < stopCount)
        localStorage.setItem(key, stop);
      else
        localStorage.removeItem(key);
    } catch (error) {
      // Then there is no going on.
    }
  }

  return { inEditor, homeAddress, readTourTitle, nameStop, inAddress, keep, keptStop, keepStop };
})();
