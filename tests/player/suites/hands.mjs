import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour, sitePage } from '../support/tour.mjs';

const grabbing = '<label>Field <input id="field"></label><script>document.getElementById("field").focus();</script>';

/** Keys, fingers and fast hands. */
export function hands(context) {
  describe('hands', () => {
    let tour;
    before(async () => {
      const stops = numberedStops(15);
      stops[1].address = 'grab.htm';
      tour = await publishTour({ stops, files: { 'grab.htm': sitePage('Grabbing', grabbing) } });
    });
    after(() => tour.remove());
    const visit = (test) => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await test(visitor);
    });

    it('go to the last and the first stop by End and Home', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[14], () => visitor.key('End'));
      await visitor.arriveAt(tour.stops[0], () => visitor.key('Home'));
    }));

    it('open the contents by Esc, and the page of the stop again', () => visit(async (visitor) => {
      await visitor.load('mw', 'toc.htm', () => visitor.key('Escape'));
      await visitor.load('mw', 'site1.htm', () => visitor.key('Escape'));
      await visitor.load('mw', 'tourkeys.htm', () => visitor.page.keyboard.type('?'));
      await visitor.arriveAt(tour.stops[1], () => visitor.key('ArrowRight'));
    }));

    it('end ten stops on after ten fast clicks', () => visit(async (visitor) => {
      const navigator = await visitor.frame('nav');
      await visitor.arriveAt(tour.stops[10], () => navigator.$eval('[data-go="next"]', async (button) => {
        for (let click = 0; click < 10; click += 1) {
          button.click();
          // Some clicks come while a stop arrives.
          await new Promise((resolve) => { requestAnimationFrame(resolve); });
        }
      }));
      await visitor.navigatorShows('11 of 15');
    }));

    it('do not run ahead of the stops when a key is held', () => visit(async (visitor) => {
      const stop = tour.stops[1];
      const navigator = await visitor.frame('nav');
      await visitor.arriveAt(stop, () => navigator.evaluate(() => {
        for (const repeat of [false, true, true, true, true])
          document.body.dispatchEvent(new KeyboardEvent('keydown', { key: 'ArrowRight', repeat, bubbles: true }));
      }));
      await visitor.navigatorShows('2 of 15');
      await visitor.arriveAt(tour.stops[2], () => visitor.press('next'));
    }));

    it('turn the page by a swipe over the words, and scroll by one along them', () => visit(async (visitor) => {
      const swipe = async (x, y) => (await visitor.frame('nar')).evaluate((toX, toY) => {
        const target = document.querySelector('main');
        const at = (clientX, clientY) => ({ identifier: 1, target, clientX, clientY });
        const send = (type, touch) => target.dispatchEvent(Object.assign(new Event(type, { bubbles: true }), {
          touches: type === 'touchstart' ? [touch] : [], changedTouches: [touch],
        }));
        send('touchstart', at(200, 50));
        send('touchend', at(200 + toX, 50 + toY));
      }, x, y);
      await swipe(-90, 80);
      await swipe(-30, 0);
      await visitor.arriveAt(tour.stops[1], () => swipe(-120, 20));
      await visitor.arriveAt(tour.stops[0], () => swipe(120, -20));
    }));

    it('keep the keys of the tour where a page takes the focus', () => visit(async (visitor) => {
      await (await visitor.frame('nar')).evaluate(() => window.focus());
      await visitor.arriveAt(tour.stops[1], () => visitor.key('ArrowRight'));
      await visitor.page.waitForFunction(() => document.activeElement.name === 'nar', { polling: 50 });
      await visitor.arriveAt(tour.stops[2], () => visitor.key('ArrowRight'));
    }));

    it('write into the page of a stop undisturbed', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      await visitor.click('mw', '#field');
      await visitor.page.keyboard.type('cactus');
      await visitor.key('ArrowLeft');
      const site = await visitor.frame('mw');
      assert.equal(await site.$eval('#field', (field) => field.value), 'cactus');
      await visitor.navigatorShows('2 of 15');
    }));
  });
}
