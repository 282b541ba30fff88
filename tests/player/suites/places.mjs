import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

/** The address and the title of the window say where the visitor is, and what is kept brings them back. */
export function places(context) {
  describe('addresses', () => {
    let tour;
    before(async () => { tour = await publishTour({ title: 'Places', stops: numberedStops(5) }); });
    after(() => tour.remove());
    const visit = (test) => context.visit(tour.folder, test);
    const showsTitle = (visitor, title) => visitor.page.waitForFunction(
      (wanted) => document.title === wanted, { polling: 50 }, title);
    const write = (visitor, number) => visitor.page.evaluate((n) => { location.hash = `stop-${n}`; }, number);
    const forget = (visitor) => visitor.page.evaluate(() => localStorage.clear());

    it('follow the stops, as does the title of the window', () => visit(async (visitor) => {
      await visitor.openTour();
      const lengthBefore = await visitor.historyLength();
      for (const stop of tour.stops.slice(0, 2)) {
        await visitor.arriveAt(stop, () => visitor.press('next'));
        await visitor.placeIs(`playtour.htm#stop-${stop.number}`);
        await showsTitle(visitor, `${stop.number}. ${stop.title} - Places`);
      }
      assert.equal(await visitor.historyLength(), lengthBefore + 2);
      await visitor.arriveAt(tour.stops[0], () => visitor.page.evaluate(() => history.back()));
      await visitor.placeIs('playtour.htm#stop-1');
      await visitor.load('mw', 'openhelp.htm', () => visitor.press('exit'));
      await visitor.placeIs('playtour.htm');
      await showsTitle(visitor, 'Places');
    }));

    it('lead to their stop', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[3], () => visitor.goTo('playtour.htm#stop-4'));
      await visitor.navigatorShows('4 of 5');
      await visitor.placeIs('playtour.htm#stop-4');
      await visitor.arriveAt(tour.stops[4], () => visitor.press('next'));
      await visitor.placeIs('playtour.htm#stop-5');
    }));

    it('lead to their stop from a running tour, and back from there', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[3], () => write(visitor, 4));
      await visitor.navigatorShows('4 of 5');
      await visitor.placeIs('playtour.htm#stop-4');
      await visitor.arriveAt(tour.stops[0], () => visitor.page.evaluate(() => history.back()));
      await visitor.navigatorShows('1 of 5');
      await visitor.placeIs('playtour.htm#stop-1');
    }));

    it('lead to the beginning when they name no stop', () => visit(async (visitor) => {
      await visitor.goTo('playtour.htm#stop-77');
      await visitor.navigatorShows('Start');
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.placeIs('playtour.htm#stop-1');
    }));

    it('are copied by a button', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      const words = await visitor.waitIn('nar', () => !document.querySelector('[data-tour-copy]').hidden);
      await words.evaluate(() => {
        window.copied = [];
        // What the browser would put into the clipboard, by either way.
        Object.defineProperty(navigator, 'clipboard', { value: { writeText: async (text) => { window.copied.push(text); } } });
      });
      await visitor.click('nar', '[data-tour-copy]');
      await visitor.waitIn('nar', () => document.querySelector('[data-tour-copy]').textContent === 'Link copied');
      assert.deepEqual(await words.evaluate(() => window.copied), [visitor.url('playtour.htm#stop-2')]);
    }));

    it('are copied without the clipboard of safe places, too', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const words = await visitor.waitIn('nar', () => !document.querySelector('[data-tour-copy]').hidden);
      await words.evaluate(() => {
        Object.defineProperty(navigator, 'clipboard', { value: undefined });
        document.addEventListener('copy', () => { window.copied = getSelection().toString() || document.activeElement.value; });
      });
      await visitor.click('nar', '[data-tour-copy]');
      await visitor.waitIn('nar', () => document.querySelector('[data-tour-copy]').textContent === 'Link copied');
      assert.equal(await words.evaluate(() => window.copied), visitor.url('playtour.htm#stop-1'));
    }));

    it('offer to go on where the visitor has been the last time', () => visit(async (visitor) => {
      await visitor.openTour();
      await forget(visitor);
      await visitor.arriveAt(tour.stops[3], () => write(visitor, 4));
      await visitor.goTo('index.htm');
      await visitor.openTour();
      const offer = () => [...document.querySelectorAll('[data-go-on]')].map((link) => link.hidden || link.textContent).join();
      await visitor.waitIn('nar', () => document.querySelector('[data-go-on]').textContent === 'Go on at stop 4');
      await visitor.arriveAt(tour.stops[3], () => visitor.click('nar', '[data-go-on]'));
      await visitor.arriveAt(tour.stops[4], () => visitor.press('next'));
      await visitor.goTo('index.htm');
      await visitor.openTour();
      await visitor.waitIn('nar', () => document.querySelector('.keys'));
      assert.equal(await (await visitor.frame('nar')).evaluate(offer), 'true');
    }));

    it('offer nothing where the browser keeps nothing', () => visit(async (visitor) => {
      await visitor.page.evaluateOnNewDocument(() => {
        Object.defineProperty(window, 'localStorage', { get() { throw new Error('refused'); } });
      });
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
    }));
  });

  describe('a tour without stops', () => {
    let tour;
    before(async () => { tour = await publishTour({ title: 'Empty', stops: [] }); });
    after(() => tour.remove());
    const startIsHidden = () => document.querySelector('a.primary').hidden
      && /no stops/.test(document.querySelector('main').innerText);

    it('offers no start, inside and outside', () => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.waitIn('mw', startIsHidden);
      for (const name of ['index.htm', 'openhelp.htm']) {
        await visitor.open(name);
        await visitor.page.waitForFunction(startIsHidden, { polling: 50 });
      }
    }));
  });
}
