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
  const entriesKept = 50; // Browsers drop the oldest entries of a longer history, so steps cannot be counted then.

  const waitingPatience = 3000;
  const focusPatience = 3000;
  const traversalPatience = 300;

  let atStart = true; // The frames still show what they were loaded with.
  let wantedStop = 0;
  let shownStop = 0;
  let shownAddress = '';
  let shownTitle = '';
  let titles = [];
  let requested = []; // Stops that were asked for and have not arrived.
  let requestedAt = -Infinity;
  let awaited = null; // The stop whose waiting page has been asked for and has not come.
  let besideStop = ''; // The page of the tour's own that is in the site frame instead of the stop's.
  let visit = {};

  const frameElement = (name) => document.querySelector(`frame[name="${name}"]`);
  const frameWindow = (name) => frameElement(name)?.contentWindow;
  const stopPage = (stop) => `${homePath}page${stop}.htm`;

  // Showing stops

  function state() {
    return {
      tour: 'state',
      stop: shownStop,
      stopCount: numStops,
      address: shownAddress,
      title: shownTitle,
      nextTitle: titles[shownStop] || '',
      goOn: shownStop > 0 ? 0 : Math.min(tourPlace.keptStop(), numStops),
      visited: visit.visited || [],
      inEditor: tourPlace.inEditor,
    };
  }

  function tell(frame, message) {
    frameWindow(frame)?.postMessage(message, '*');
  }

  function tellState() {
    for (const frame of ['nav', 'ahead'])
      tell(frame, state());
  }

  /** `replacing`: the entry in the history is there already. */
  function requestStop(stop, { replacing = false } = {}) {
    if (!Number.isInteger(stop) || stop < 0 || stop > numStops)
      return;
    wantedStop = stop;
    requested.push(stop);
    requestedAt = performance.now();
    const address = stop > 0 ? stopPage(stop) : `${homePath}lower.htm`;
    if (replacing)
      frameWindow('nar').location.replace(address);
    else
      frameWindow('nar').location.href = address;
  }

  // The site frame's entry in the browser's history is replaced: the one that the narration frame made is enough,
  // and going back brings both frames back.
  function showInSiteFrame(address) {
    besideStop = '';
    frameWindow('mw').location.replace(address);
  }

  /** The page that stands for an address until the browser has it, and for one that is none. */
  function waitingPage(address) {
    return `${homePath}tourwait.htm?${encodeURIComponent(isPageAddress(address) ? address : '')}`;
  }

  /**
   * Where the waiting page does not come in time, the former stop's page is hidden before the words appear; where
   * something else comes in its place, as when its file is missing, the stop's page is gone to without it.
   */
  function showStopPage(address) {
    const waiting = { address, isFilled: false, isLate: false };
    shownAddress = address;
    awaited = waiting;
    showInSiteFrame(waitingPage(address));
    setTimeout(waitNoLonger, waitingPatience, waiting);
    // Not every browser tells that a missing file is missing.
    setTimeout(goWithoutWaiting, 2 * waitingPatience, waiting);
  }

  function waitNoLonger(waiting) {
    if (awaited !== waiting)
      return;
    frameElement('mw').style.visibility = 'hidden';
    waiting.isLate = true;
    showWords();
    if (waiting.isFilled)
      goWithoutWaiting(waiting);
  }

  function goWithoutWaiting(waiting) {
    if (awaited !== waiting)
      return;
    const { address } = waiting;
    awaited = null;
    if (!isPageAddress(address))
      return;
    tellEditor('coming');
    showInSiteFrame(address);
  }

  function waitingPageCame({ address }) {
    if (!awaited || address !== (isPageAddress(awaited.address) ? awaited.address : ''))
      return;
    awaited = null;
    frameElement('mw').style.visibility = '';
    showWords();
  }

  function showWords() {
    tell('nar', { tour: 'show' });
  }

  /** The editor shows whether a stop's page is on its way; of frames alone its engine does not tell. */
  function tellEditor(site) {
    if (tourPlace.inEditor)
      window.status = `>*>*>site->${site}`;
  }

  function siteFilled() {
    tellEditor('there');
    if (awaited?.isLate)
      goWithoutWaiting(awaited);
    else if (awaited)
      awaited.isFilled = true;
    else
      frameElement('mw').style.visibility = '';
    if (performance.now() - requestedAt < focusPatience)
      giveKeysToWords();
  }

  /** A page that takes the focus when it comes would keep the keys of the tour. */
  function giveKeysToWords() {
    const { activeElement } = document;
    if (document.hasFocus() && (activeElement === frameElement('mw') || activeElement?.localName !== 'frame'))
      frameWindow('nar').focus();
  }

  /** A stop that was only passed on the way to another one changes nothing about where the visitor wants to go. */
  function settle(stop) {
    const position = requested.indexOf(stop);
    const isPassed = position >= 0 && position < requested.length - 1;
    requested = isPassed ? requested.slice(position + 1) : [];
    if (!isPassed)
      wantedStop = stop;
  }

  function arrivedAt(stop) {
    const steppedHere = requested.length > 0;
    atStart = false;
    settle(stop);
    shownStop = stop;
    shownTitle = titles[stop - 1] || '';
    remember({ stop, visited: [...new Set([...(visit.visited || []), stop])] });
    tourPlace.nameStop(stop, shownTitle);
    tourPlace.keepStop(stop, numStops);
    tellState();
    if (steppedHere)
      giveKeysToWords();
  }

  function stopArrived(stop, address) {
    if (!Number.isInteger(stop) || stop < 1)
      return;
    showStopPage(address);
    arrivedAt(stop);
    tell('nar', { tour: 'announce' });
  }

  function openingArrived() {
    if (!atStart)
      showInSiteFrame(`${homePath}openhelp.htm`);
    shownAddress = '';
    awaited = null;
    arrivedAt(0);
  }

  /** The stop's own page knows its title best; titles with slips in their mark-up spoil the list of all. */
  function titleTold(title) {
    shownTitle = String(title);
    tourPlace.nameStop(shownStop, shownTitle);
    tellState();
  }

  function titlesTold(all) {
    if (!Array.isArray(all))
      return;
    titles = all.map(String);
    tellState();
  }

  /** Opens a page of the tour's own in the site frame, or the page of the stop again if it is there. */
  function showBesideStop(page) {
    if (besideStop === page) {
      showInSiteFrame(shownStop > 0 ? waitingPage(shownAddress) : `${homePath}openhelp.htm`);
    } else {
      frameWindow('mw').location.href = homePath + page;
      besideStop = page;
    }
  }

  const steps = {
    next: () => requestStop(wantedStop + 1),
    previous: () => requestStop(wantedStop - 1),
    first: () => requestStop(Math.min(1, numStops)),
    last: () => requestStop(numStops),
    contents: () => showBesideStop('toc.htm'),
    keys: () => showBesideStop('tourkeys.htm'),
    exit: () => leaveTour(),
  };

  /** A key that is held goes on only from a stop that has come. */
  function go(step, held) {
    if (!held || requested.length === 0)
      steps[step]?.();
  }

  // Leaving

  /**
   * What must survive a reload: where the tour began, as an entry in the history and as a page, and the stop that
   * is shown. A stop page that was opened alone leads here by an address as playtour.htm#stop-3 and gives up its
   * own entry for it; it adds "-linked" when it had been opened by a link.
   */
  function newVisit() {
    const { stop, linked } = tourPlace.inAddress();
    const startPage = stop ? '' : document.referrer || (self.navigation?.activation?.from?.url ?? '');
    return { entry: history.length, startPage, linked, stop };
  }

  function remember(change) {
    visit = { ...visit, ...change };
    tourPlace.keep(visit);
  }

  /**
   * The visitor has written another stop into the address; such an entry has no state yet. Where they have gone back
   * to an entry that has one, the narration frame mostly goes back by itself.
   */
  function followAddress() {
    const isWritten = history.state === null;
    setTimeout(() => {
      const { stop } = tourPlace.inAddress();
      if (requested.length === 0 && stop !== shownStop)
        requestStop(stop, { replacing: true });
    }, isWritten ? 0 : traversalPatience);
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

  function leaveTour() {
    const text = String(homePage).trim();
    const address = text && text !== 'AUTO' ? tourPlace.homeAddress(text) : '';
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
    if (frame === 'nav')
      tellBar(tourLayout.hasBar());
    if (frame === 'ahead')
      tell('ahead', { tour: 'tell-titles' });
    if (frame === 'nar' && (!awaited || awaited.isLate))
      showWords();
  }

  function tellBar(bar) {
    tell('nav', { tour: 'layout', bar });
  }

  /** A page of the tour's own that says hello has come into the site frame, whoever opened it. */
  function siteGreets({ page }) {
    besideStop = ['toc.htm', 'tourkeys.htm'].includes(page) ? page : '';
    welcome('mw');
  }

  const goTo = ({ to, held }) => go(to, held);

  const answers = {
    mw: {
      hello: siteGreets,
      go: goTo,
      // A link that was followed before its page had aimed it at the narration frame.
      stop: ({ stop }) => requestStop(stop),
      titles: ({ titles: all }) => titlesTold(all),
      waiting: waitingPageCame,
      leaving: () => tellEditor('coming'),
    },
    logo: {
      hello: () => welcome('logo'),
      go: goTo,
    },
    nar: {
      hello: () => welcome('nar'),
      go: goTo,
      stop: ({ stop, address }) => stopArrived(stop, address),
      title: ({ title }) => titleTold(title),
      size: (size) => tourLayout.wordsNeed(size),
      opening: openingArrived,
      status: ({ text }) => tell('nav', { tour: 'status', text }),
      'sub-stop': ({ address }) => openSubStop(address),
    },
    nav: {
      hello: () => welcome('nav'),
      go: goTo,
      size: (size) => tourLayout.navigatorNeeds(size),
    },
    ahead: {
      hello: () => welcome('ahead'),
      titles: ({ titles: all }) => titlesTold(all),
    },
  };

  function openSubStop(address) {
    if (isPageAddress(address))
      frameWindow('mw').location.href = waitingPage(address);
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

  // Beginning

  function framesParsed() {
    tourLayout.begin(tellBar);
    frameElement('mw').addEventListener('load', siteFilled);
    tourPlace.readTourTitle();
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
    go(step, event.repeat);
  }

  function start() {
    tellEditor('there'); // The tour that was here before may have said something else.
    remember(history.state || newVisit());
    addEventListener('message', receive);
    addEventListener('keydown', pressKey);
    addEventListener('hashchange', followAddress);
    // Borders count only if they are set before the frames are laid out for the first time.
    const parsing = new MutationObserver(tourLayout.prepareFrames);
    parsing.observe(document.documentElement, { childList: true, subtree: true });
    document.addEventListener('DOMContentLoaded', () => {
      parsing.disconnect();
      tourLayout.prepareFrames();
      framesParsed();
    });
  }

  // A stop page that was opened alone asks in an invisible frame whether the tour is there.
  if (location.hash === '#here' && parent !== self) {
    parent.postMessage({ tour: 'here', stopCount: numStops }, '*');
    stop();
  } else {
    start();
  }
})();
