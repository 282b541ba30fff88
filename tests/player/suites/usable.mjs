import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

const narrowWindow = { width: 320, height: 568 };

/** The parts of a page that stick out of its window to the right. */
const overflowing = () => {
  const { clientWidth, scrollWidth } = document.documentElement;
  return scrollWidth > clientWidth ? [`${location.pathname}: ${scrollWidth} > ${clientWidth}`] : [];
};

/** The keyboard is enough to play a tour, and a small window too. */
export function usable(context) {
  describe('keyboard and small window', () => {
    let tour;
    before(async () => { tour = await publishTour({ stops: numberedStops(12) }); });
    after(() => tour.remove());
    const visit = (test, window) => context.visit(tour.folder, test, window);

    /** Presses Tab until the focus is on something with this text. */
    async function tabTo(visitor, text, { backwards = false } = {}) {
      for (let presses = 0; presses < 60; presses += 1) {
        const focused = await visitor.focusAfter(() => visitor.tab({ backwards }));
        if (focused?.text.trim().startsWith(text))
          return;
      }
      assert.fail(`Tab should lead to "${text}"`);
    }

    it('can be played with Tab and Enter alone', () => visit(async (visitor) => {
      await visitor.openTour();
      await tabTo(visitor, 'Next');
      await visitor.arriveAt(tour.stops[0], () => visitor.key('Enter'));
      await visitor.arriveAt(tour.stops[1], () => visitor.key('Enter'));
      await tabTo(visitor, 'Contents');
      await visitor.load('mw', 'toc.htm', () => visitor.key('Enter'));
      await tabTo(visitor, 'Stop 5\u2014', { backwards: true });
      await visitor.arriveAt(tour.stops[4], () => visitor.key('Enter'));
      await tabTo(visitor, 'Exit');
      await visitor.load('mw', 'openhelp.htm', () => visitor.key('Enter'));
    }));

    it('shows where the focus is', () => visit(async (visitor) => {
      await visitor.openTour();
      await tabTo(visitor, 'Next');
      const navigator = await visitor.frame('nav');
      const outline = await navigator.evaluate(() => getComputedStyle(document.activeElement).outlineStyle);
      assert.equal(outline, 'solid');
    }));

    it('can be played in a window of 320 pixels', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.key('ArrowRight'));
      await visitor.chooseInContents(tour.stops[11]);
      await visitor.arriveAt(tour.stops[10], () => visitor.press('previous'));
    }, narrowWindow));

    it('fits into a window of 320 pixels', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.openContents();
      const tooWide = [];
      for (const name of ['mw', 'nar', 'nav'])
        tooWide.push(...await (await visitor.frame(name)).evaluate(overflowing));
      const navigator = await visitor.frame('nav');
      const hidden = await navigator.$$eval('a, button', (controls) => controls
        .map((control) => ({ name: control.textContent, box: control.getBoundingClientRect() }))
        .filter(({ box }) => box.top < 0 || box.left < 0 || box.right > innerWidth || box.bottom > innerHeight)
        .map(({ name }) => name));
      const wordsWidth = await (await visitor.frame('nar')).evaluate(() => innerWidth);
      assert.deepEqual(tooWide, []);
      assert.deepEqual(hidden, []);
      assert.ok(wordsWidth >= 200, `the narration should have room, not ${wordsWidth} pixels`);
    }, narrowWindow));

    it('fits the pages outside the frames into 320 pixels', () => visit(async (visitor) => {
      for (const name of ['index.htm', 'openhelp.htm', 'toc.htm', 'tguide.htm', 'search.htm', 'newpage.htm']) {
        await visitor.open(name);
        assert.deepEqual(await visitor.page.evaluate(overflowing), []);
      }
    }, narrowWindow));
  });
}
