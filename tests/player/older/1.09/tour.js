'use strict';

/**
 * The frameset of a tour. It knows which stop is shown, shows its page in the site frame, has the stops loaded
 * ahead and leaves the tour. The pages in its frames ask for these things by messages (see tourpage.js).
 */

/** Address of the folder of the tour, with a slash at its end. Stop pages reach their local files by it. */
var homePath = new URL('.', location.href).href;

/** Called when the frameset has loaded: begins to load the stops ahead, if the tour wants that. */
var startTimers;

(() => {
  const frameTitles = {
    mw: 'Page of the stop',
    logo: 'Logo',
    nar: 'Narration',
    nav: 'Navigator',
    ahead: 'Stops loaded ahead',
  };
  const narrowWidth = 600;
  const entriesKept = 50; // Browsers drop the oldest entries of a longer history, so steps cannot be counted then.

  let atStart = true; // The frames still show what they were loaded with.
  let wantedStop = 0;
  let shownStop = 0;
  let visit = {};

  const frameElement = (name) => document.querySelector(`frame[name="${name}"]`);
  const frameWindow = (name) => frameElement(name)?.contentWindow;
  const stopPage = (stop) => `${homePath}page${stop}.htm`;

  // Showing stops

  function state() {
    return { tour: 'state', stop: shownStop, stopCount: numStops };
  }

  function tell(frame, message) {
    frameWindow(frame)?.postMessage(message, '*');
  }

  function requestStop(stop) {
    if (!Number.isInteger(stop) || stop < 0 || stop > numStops)
      return;
    wantedStop = stop;
    frameWindow('nar').location.href = stop > 0 ? stopPage(stop) : `${homePath}lower.htm`;
  }

  // The site frame's entry in the browser's history is replaced: the one that the narration frame made is enough,
  // and going back brings both frames back.
  function showInSiteFrame(address) {
    if (isPageAddress(address))
      frameWindow('mw').location.replace(address);
  }

  function arrivedAt(stop) {
    atStart = false;
    wantedStop = stop;
    shownStop = stop;
    tell('nav', state());
    remember({ stop });
  }

  function stopArrived(stop, address) {
    if (!Number.isInteger(stop) || stop < 1)
      return;
    showInSiteFrame(address);
    arrivedAt(stop);
    tell('nar', { tour: 'announce' });
  }

  function openingArrived() {
    if (!atStart)
      showInSiteFrame(`${homePath}openhelp.htm`);
    arrivedAt(0);
  }

  function go(step) {
    if (step === 'next' && wantedStop < numStops)
      requestStop(wantedStop + 1);
    else if (step === 'previous' && wantedStop > 0)
      requestStop(wantedStop - 1);
    else if (step === 'exit')
      leaveTour();
  }

  // Leaving

  /**
   * What must survive a reload: where the tour began, as an entry in the history and as a page, and the stop that
   * is shown. A stop page that was opened alone leads here by an address as playtour.htm#stop-3 and gives up its
   * own entry for it; it adds "-linked" when it had been opened by a link.
   */
  function newVisit() {
    const [, stop, linked] = /^#stop-(\d+)(-linked)?$/.exec(location.hash) || [];
    const startPage = stop ? '' : document.referrer || (self.navigation?.activation?.from?.url ?? '');
    return { entry: history.length, startPage, linked: Boolean(linked), stop: Number(stop || 0) };
  }

  function remember(change) {
    visit = { ...visit, ...change };
    history.replaceState(visit, '');
  }

  function returnToStartPage() {
    const embedded = parent !== self;
    const startPage = isPageAddress(visit.startPage) ? visit.startPage : '';
    if (embedded || !(startPage || visit.linked))
      requestStop(0);
    else if (visit.entry > 1 && history.length < entriesKept)
      goBackTo(visit.entry - 1);
    else if (startPage)
      location.href = startPage;
    else
      requestStop(0);
  }

  // A new entry is the last one, so from there the number of steps back is known wherever the visitor has been.
  function goBackTo(entry) {
    history.pushState(visit, '');
    history.go(entry - history.length);
  }

  /** Reads a home page as people write it: an address, a host without a scheme, or a file beside the tour. */
  function homeAddress(text) {
    const isFileName = /^[^/]+\.(html?|xhtml|php|aspx?|jsp|pdf|txt)([?#].*)?$/i.test(text);
    const startsWithHost = /^[\w-]+(\.[\w-]+)+(:\d+)?([/?#]|$)/.test(text) || /^[\w.-]+:\d+([/?#]|$)/.test(text);
    if (text.startsWith('//') || (startsWithHost && !isFileName))
      return `https://${text.replace(/^\/+/, '')}`;
    return new URL(text, location.href).href;
  }

  function leaveTour() {
    const text = String(homePage).trim();
    const address = text && text !== 'AUTO' ? homeAddress(text) : '';
    if (isPageAddress(address))
      location.href = address;
    else
      returnToStartPage();
  }

  startTimers = () => {
    if (bufFlag)
      tell('ahead', { tour: 'load-ahead', stopCount: numStops, timeForEach: bufDelay });
  };

  // Messages

  function welcome(frame) {
    tell(frame, state());
    // The stop may have announced itself before its navigator was there to hear it.
    if (frame === 'nav' && shownStop > 0)
      tell('nar', { tour: 'announce' });
  }

  const answers = {
    mw: {
      hello: () => welcome('mw'),
      go: ({ to }) => go(to),
      // A link that was followed before its page had aimed it at the narration frame.
      stop: ({ stop }) => requestStop(stop),
    },
    logo: {
      hello: () => welcome('logo'),
      go: ({ to }) => go(to),
    },
    nar: {
      hello: () => welcome('nar'),
      go: ({ to }) => go(to),
      stop: ({ stop, address }) => stopArrived(stop, address),
      opening: openingArrived,
      status: ({ text }) => tell('nav', { tour: 'status', text }),
      'sub-stop': ({ address }) => openSubStop(address),
    },
    nav: {
      hello: () => welcome('nav'),
      go: ({ to }) => go(to),
    },
    ahead: {
      hello: () => welcome('ahead'),
    },
  };

  function openSubStop(address) {
    if (isPageAddress(address))
      frameWindow('mw').location.href = address;
  }

  /**
   * The site frame shows strangers' pages: only pages from where the tour itself comes from are listened to. On
   * disk that is nowhere in most browsers, and strangers can be from nowhere, too. Where pages on disk do have an
   * origin, as in the editor, they are told apart by it.
   */
  function isOwnOrigin(origin) {
    return origin === self.origin || (self.origin === 'null' && origin === 'file://');
  }

  function receive(event) {
    const name = Object.keys(answers).find((frame) => frameWindow(frame) === event.source);
    if (!name || !isOwnOrigin(event.origin) || !event.data)
      return;
    answers[name][event.data.tour]?.(event.data);
  }

  // Frames

  /** Gives the frames what their generated lines lack: names for screen readers and calm borders. */
  function prepareFrames() {
    const line = getComputedStyle(document.documentElement).getPropertyValue('--line').trim();
    for (const frameset of document.querySelectorAll('frameset:not([border])')) {
      frameset.setAttribute('border', '2');
      frameset.setAttribute('bordercolor', line);
    }
    for (const frame of document.querySelectorAll('frame:not([title])'))
      frame.title = frameTitles[frame.name] || '';
  }

  /** In a narrow window the logo gives way and the narration gets more room. */
  function fitFrames({ outer, inner, rows, cols }) {
    const narrow = innerWidth <= narrowWidth;
    const [, narHeight] = rows.split(',').map(Number);
    const [, , navWidth] = cols.split(',').map(Number);
    const room = Math.min(200, Math.round(innerHeight * 0.45));
    outer.rows = narrow ? `*,${Math.max(narHeight, room)},0` : rows;
    inner.cols = narrow ? `0,*,${navWidth}` : cols;
    document.documentElement.classList.toggle('narrow', narrow);
  }

  function framesParsed() {
    const [outer, inner] = document.querySelectorAll('frameset');
    const generated = { outer, inner, rows: outer.rows, cols: inner.cols };
    fitFrames(generated);
    addEventListener('resize', () => fitFrames(generated));
    document.title = new DOMParser().parseFromString(document.title, 'text/html').body.textContent.trim();
    // The editor's preview of a stop names that stop's page itself, whatever was shown before at this address.
    const isPreview = /^page\d+\.htm$/.test(frameElement('nar').getAttribute('src'));
    if (!isPreview && visit.stop > 0 && visit.stop <= numStops) {
      wantedStop = visit.stop;
      frameWindow('nar').location.replace(stopPage(visit.stop));
    }
  }

  function pressKey(event) {
    const step = tourStepOfKey(event);
    if (!step)
      return;
    event.preventDefault();
    go(step);
  }

  function start() {
    remember(history.state || newVisit());
    addEventListener('message', receive);
    addEventListener('keydown', pressKey);
    // Borders count only if they are set before the frames are laid out for the first time.
    const parsing = new MutationObserver(prepareFrames);
    parsing.observe(document.documentElement, { childList: true, subtree: true });
    document.addEventListener('DOMContentLoaded', () => {
      parsing.disconnect();
      prepareFrames();
      framesParsed();
    });
  }

  // A stop page that was opened alone asks in an invisible frame whether the tour is there.
  if (location.hash === '#here' && parent !== self) {
    parent.postMessage({ tour: 'here' }, '*');
    stop();
  } else {
    start();
  }
})();
