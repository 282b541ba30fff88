import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

/** What tells visitors where they are, what comes next and where they have been. */
export function whereabouts(context) {
  describe('where the visitor is', () => {
    let tour;
    before(async () => {
      const stops = numberedStops(4);
      stops[1].title = 'Dunes <b>and';
      stops[2].narration = 'Here a <i>roadrunner</i> lives.';
      tour = await publishTour({ stops });
    });
    after(() => tour.remove());
    const visit = (test) => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await test(visitor);
    });
    const says = (visitor, id, text) => visitor.waitIn('nav', (part, wanted) => {
      const element = document.getElementById(part);
      return !element.hidden && element.textContent === wanted;
    }, id, text);

    it('is told in numbers, as a bar and for screen readers, with what comes next', () => visit(async (visitor) => {
      await says(visitor, 'position', '1 of 4');
      await says(visitor, 'spoken', 'Stop 1 of 4: Title 1');
      await says(visitor, 'coming', 'Next: Dunes and');
      const bar = await (await visitor.frame('nav')).$eval('#progress', ({ value, max }) => ({ value, max }));
      assert.deepEqual(bar, { value: 1, max: 4 });
      const loud = await (await visitor.frame('nav')).$$eval('[role="status"]', (all) => all.map(({ id }) => id));
      assert.deepEqual(loud, ['spoken']);
    }));

    it('is told at the last stop, which offers to start again and to leave', () => visit(async (visitor) => {
      assert.equal(await (await visitor.frame('nar')).$eval('[data-tour-end]', (end) => end.checkVisibility()), false);
      await visitor.arriveAt(tour.stops[3], () => visitor.key('End'));
      await says(visitor, 'coming', 'This is the last stop.');
      const words = await visitor.waitIn('nar', () => document.querySelector('[data-tour-end]').checkVisibility());
      const offers = await words.$$eval('[data-tour-end] button', (all) => all.map((button) => button.textContent));
      assert.deepEqual(offers, ['Start again', 'Exit from the tour']);
      await visitor.arriveAt(tour.stops[0], () => visitor.click('nar', '[data-go="first"]'));
      await visitor.arriveAt(tour.stops[3], () => visitor.key('End'));
      await visitor.waitIn('nar', () => document.querySelector('[data-tour-end]').checkVisibility());
      await visitor.load('mw', 'openhelp.htm', () => visitor.click('nar', '[data-go="exit"]'));
    }));

    it('is marked in the contents, as are the stops that were visited', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      await visitor.openContents();
      const page = await visitor.waitIn('mw', () => document.querySelector('a.visited'));
      const visited = await page.$$eval('a.visited', (all) => all.map((link) => link.getAttribute('href')));
      assert.deepEqual(visited, ['page1.htm', 'page2.htm']);
    }));

    it('can be chosen in the contents by words of the titles and of the stops', () => visit(async (visitor) => {
      await visitor.openContents();
      await visitor.waitIn('mw', () => document.querySelector('.filter input'));
      const look = async (text) => {
        const page = await visitor.frame('mw');
        await page.$eval('.filter input', (box) => { box.value = ''; });
        await page.type('.filter input', text);
      };
      const finds = (count, first) => visitor.waitIn('mw', (told, href) => {
        const shown = [...document.querySelectorAll('main a[href^="page"]')].filter((link) => link.checkVisibility());
        return document.querySelector('.filter [role="status"]').textContent === told
          && shown[0]?.getAttribute('href') === href;
      }, count, first);
      await finds('4 stops', 'page1.htm');
      await look('DUNES');
      await finds('1 of 4 stops', 'page2.htm');
      await look('lives roadrunner');
      await finds('1 of 4 stops', 'page3.htm');
      await visitor.arriveAt(tour.stops[2], () => visitor.click('mw', 'a[href="page3.htm"]'));
    }));
  });
}
