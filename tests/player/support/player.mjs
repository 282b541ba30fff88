import assert from 'node:assert/strict';
import { EventLog } from './event-log.mjs';

const reportPrefix = '[tour] ';
export const stopTag = '>*>*>vosktourstop->';

/** Runs in every document before its own scripts: reports what the frames do. 'words': what was invisible is not. */
function reportFrame(prefix) {
  const report = (what, details) => {
    console.debug(prefix + JSON.stringify({ what, frame: window === top ? 'top' : window.name, url: location.href, ...details }));
  };
  new MutationObserver(() => {
    if (document.documentElement?.style.visibility === '')
      report('words', {});
  }).observe(document, { attributes: true, attributeFilter: ['style'], subtree: true });
  let status = '';
  Object.defineProperty(window, 'status', {
    get: () => status,
    set(text) {
      status = text;
      report('status', { text });
    },
  });
  addEventListener('load', () => report('load', { text: document.body?.textContent ?? '' }));
  addEventListener('focusin', (event) => {
    report('focus', { text: event.target.textContent });
  });
}

const fileName = (url) => new URL(url).pathname.split('/').pop();

/** A visitor: one browser window that plays a tour, and a log of everything that happens in it. */
export class Visitor {
  /** What frames do: {what: 'words' | 'load' | 'status' | 'focus', frame, url, text}. */
  happened = new EventLog('in the window');
  requests = [];
  complaints = [];
  #page;
  #base;

  static async arrive(browser, base, { width = 1024, height = 700 } = {}) {
    const visitor = new Visitor();
    visitor.#page = await browser.newPage();
    visitor.#base = base;
    await visitor.#page.setViewport({ width, height });
    visitor.#listen();
    await visitor.#page.evaluateOnNewDocument(reportFrame, reportPrefix);
    return visitor;
  }

  #listen() {
    this.#page.on('console', (message) => {
      const text = message.text();
      if (text.startsWith(reportPrefix))
        this.happened.add(JSON.parse(text.slice(reportPrefix.length)));
      else if (message.type() === 'error')
        this.complaints.push(text);
    });
    this.#page.on('pageerror', (error) => this.complaints.push(String(error)));
    this.#page.on('request', (request) => this.requests.push(request.url()));
  }

  get page() {
    return this.#page;
  }

  url(name) {
    return new URL(name, this.#base).href;
  }

  /** Waits until an action has led to something that happened after it began. */
  async #following(action, wait) {
    const since = this.happened.length;
    const [result] = await Promise.all([wait(since), action()]);
    return result;
  }

  loaded(frame, url, { since = 0 } = {}) {
    return this.happened.waitFor(
      (event) => event.what === 'load' && event.frame === frame && event.url === this.url(url),
      `${url} in the frame ${frame}`,
      { since },
    );
  }

  /** The stop has been announced on the loaded navigator. */
  announced(stop, { since = 0 } = {}) {
    return this.happened.waitFor(
      (event) => event.what === 'status' && event.frame === 'nav'
        && fileName(event.url) === 'nav3.htm' && event.text === stopTag + stop,
      `the tag of stop ${stop} on the navigator`,
      { since },
    );
  }

  /** Where an action has moved the focus; undefined when it has left the pages for the browser's own window. */
  async focusAfter(action) {
    return this.#following(action, (since) => this.happened.waitFor(
      (event) => event.what === 'focus', 'the focus to move', { since, timeout: 1000 }).catch(() => undefined));
  }

  /** The words of a stop can be seen. */
  wordsShown(stop, { since = 0 } = {}) {
    return this.happened.waitFor(
      (event) => event.what === 'words' && event.frame === 'nar' && event.url === this.url(`page${stop.number}.htm`),
      `the words of stop ${stop.number}`,
      { since },
    );
  }

  /** Runs an action that leads to a stop, and waits for everything that makes up its arrival. */
  async arriveAt(stop, action) {
    return this.#following(action, async (since) => {
      const [narration, site] = await Promise.all([
        this.loaded('nar', `page${stop.number}.htm`, { since }),
        this.loaded('mw', stop.address, { since }),
        this.announced(stop.number, { since }),
      ]);
      return { narration: narration.text, site: site.text };
    });
  }

  /** Runs an action and waits until it has loaded the page into the frame. */
  async load(frame, url, action) {
    return this.#following(action, (since) => this.loaded(frame, url, { since }));
  }

  /** Firefox breaks a navigation off when the page that is left was still loading something into a frame. */
  async goTo(name) {
    try {
      await this.#page.goto(this.url(name));
    } catch (error) {
      if (!error.message.includes('NS_BINDING_ABORTED'))
        throw error;
      await this.#page.goto(this.url(name));
    }
  }

  async open(name) {
    return this.#following(
      () => this.goTo(name),
      (since) => this.loaded('top', name, { since }),
    );
  }

  /** Where the window is, behind the folder of the tour. */
  place() {
    return this.#page.url().slice(this.#base.length);
  }

  /** Waits until the address of the window is that of this place. */
  async placeIs(name) {
    await this.#page.waitForFunction((url) => location.href === url, { polling: 50 }, this.url(name));
  }

  async openTour(name = 'playtour.htm') {
    await this.open(name);
    await this.navigatorShows('Start');
  }

  async frame(name) {
    const element = await this.#page.$(`frame[name="${name}"]`);
    assert.ok(element, `there should be a frame ${name}`);
    return element.contentFrame();
  }

  /**
   * Reports from now on when the site frame has been filled, with a page of another server or with the browser's own
   * error page: neither can be looked into.
   */
  reportSiteFrame() {
    return this.#page.$eval('frame[name="mw"]', (frame, prefix) => {
      frame.addEventListener('load', () => {
        try {
          if (frame.contentWindow.location.pathname.endsWith('/tourwait.htm'))
            return;
        } catch (error) {
          // Then it is the page that was waited for.
        }
        console.debug(prefix + JSON.stringify({ what: 'filled', frame: 'mw' }));
      });
    }, reportPrefix);
  }

  /** Runs an action and waits until it has filled the site frame. */
  fillSite(action) {
    return this.#following(action, (since) => this.happened.waitFor(
      (event) => event.what === 'filled', 'the site frame to be filled', { since }));
  }

  /** Waits until something in a frame is so; `check` runs there. */
  async waitIn(frameName, check, ...args) {
    const frame = await this.frame(frameName);
    await frame.waitForFunction(check, { polling: 50 }, ...args);
    return frame;
  }

  /** Waits for the navigator to show where the visitor is, as in "2 of 9". */
  async navigatorShows(text) {
    const navigator = await this.frame('nav');
    await navigator.waitForFunction(
      (wanted) => document.getElementById('position')?.textContent === wanted,
      { polling: 'mutation' },
      text,
    );
  }

  async click(frameName, selector) {
    const frame = await this.frame(frameName);
    const element = await frame.waitForSelector(selector);
    await element.click();
  }

  press(step) {
    return this.click('nav', `[data-go="${step}"]`);
  }

  key(name) {
    return this.#page.keyboard.press(name);
  }

  async tab({ backwards }) {
    if (backwards)
      await this.#page.keyboard.down('Shift');
    await this.#page.keyboard.press('Tab');
    if (backwards)
      await this.#page.keyboard.up('Shift');
  }

  async isUsable(step) {
    const navigator = await this.frame('nav');
    return navigator.$eval(`[data-go="${step}"]`, (button) => button.ariaDisabled !== 'true');
  }

  openContents() {
    return this.load('mw', 'toc.htm', () => this.click('nav', 'a[href="toc.htm"]'));
  }

  async chooseInContents(stop) {
    await this.openContents();
    return this.arriveAt(stop, () => this.click('mw', `a[href="page${stop.number}.htm"]`));
  }

  historyLength() {
    return this.#page.evaluate(() => history.length);
  }

  /** Nothing was complained about, and nothing was asked for but the tour and the places that are allowed. */
  assertQuiet({ allowed = [] } = {}) {
    assert.deepEqual(this.complaints, []);
    const places = [this.#base, 'about:', 'data:', ...allowed];
    assert.deepEqual(this.requests.filter((url) => !places.some((place) => url.startsWith(place))), []);
  }

  leave() {
    return this.#page.close();
  }
}
