import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

/** The contents page, the guide and the other pages that visitors may also open without the tour around them. */
export function contents(context) {
  describe('the pages around the stops', () => {
    let tour;
    before(async () => {
      tour = await publishTour({ title: 'The <i>Desert</i> &amp; its plants', stops: numberedStops(3) });
    });
    after(() => tour.remove());
    const visit = (test, window) => context.visit(tour.folder, test, window);

    it('marks the stop that is shown in the contents page', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      await visitor.openContents();
      const page = await visitor.frame('mw');
      const marked = await page.waitForSelector('a[aria-current="step"]');
      assert.equal(await marked.evaluate((link) => link.textContent), 'Stop 2\u2014Title 2');
      assert.equal((await page.$$('a[aria-current]')).length, 1);
    }));

    it('shows a stop again that is chosen again', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.chooseInContents(tour.stops[1]);
      await visitor.chooseInContents(tour.stops[1]);
      await visitor.navigatorShows('2 of 3');
    }));

    it('leads into the tour from a contents page that was opened alone', () => visit(async (visitor) => {
      await visitor.open('toc.htm');
      await Promise.all([visitor.announced(2), visitor.page.click('a[href="page2.htm"]')]);
      await visitor.navigatorShows('2 of 3');
    }));

    it('leads into the tour from the opening page that was opened alone', () => visit(async (visitor) => {
      await visitor.open('openhelp.htm');
      await Promise.all([visitor.loaded('nav', 'nav3.htm'), visitor.page.click('a.primary')]);
      await visitor.navigatorShows('Start');
    }));

    it('starts from the opening page', () => visit(async (visitor) => {
      await visitor.openTour();
      const opening = await visitor.frame('mw');
      await opening.waitForSelector('a.primary[target="nar"]');
      await visitor.arriveAt(tour.stops[0], () => visitor.click('mw', 'a.primary'));
    }));

    it('starts from the index page', () => visit(async (visitor) => {
      await visitor.open('index.htm');
      await Promise.all([visitor.loaded('nav', 'nav3.htm'), visitor.page.click('a[href="playtour.htm"]')]);
      await visitor.navigatorShows('Start');
    }));

    it('leads by noframes to the contents page', () => visit(async (visitor) => {
      await visitor.open('playtour.htm');
      const fallback = await visitor.page.$eval('noframes', (element) => element.textContent);
      await visitor.page.evaluate((html) => {
        document.documentElement.innerHTML = html;
      }, fallback);
      await visitor.load('top', 'toc.htm', () => visitor.page.click('a'));
    }));

    it('lists every stop with its narration in the guide', () => visit(async (visitor) => {
      await visitor.open('tguide.htm');
      const guide = await visitor.page.$eval('main', (main) => main.textContent);
      for (const stop of tour.stops)
        assert.ok(guide.includes(`Stop-${stop.number}: ${stop.title}`) && guide.includes(stop.narration));
      const levels = await visitor.page.$$eval('[role="heading"]', (all) => all.map((one) => one.ariaLevel));
      assert.deepEqual(levels, ['1', '2', '2', '2']);
    }));

    it('prints the guide by its button', () => visit(async (visitor) => {
      await visitor.page.evaluateOnNewDocument(() => {
        window.print = () => { document.documentElement.dataset.printed = 'yes'; };
      });
      await visitor.open('tguide.htm');
      await visitor.page.click('#print');
      assert.equal(await visitor.page.$eval('html', (html) => html.dataset.printed), 'yes');
    }));

    it('shows a title with mark-up as plain text where titles stand', () => visit(async (visitor) => {
      const titleOf = async (name) => {
        await visitor.open(name);
        return visitor.page.title();
      };
      assert.equal(await titleOf('playtour.htm'), 'The Desert & its plants');
      assert.equal(await titleOf('toc.htm'), 'The Desert & its plants - Contents');
      assert.equal(await titleOf('tguide.htm'), 'The Desert & its plants - Tour guide');
      assert.equal(await titleOf('openhelp.htm'), 'The Desert & its plants - Guided tour');
      assert.equal(await titleOf('index.htm'), 'The Desert & its plants - Guided tour');
    }));

    it('names every frame', () => visit(async (visitor) => {
      await visitor.openTour();
      const titles = await visitor.page.$$eval('frame', (frames) => frames.map((frame) => frame.title));
      assert.equal(new Set(titles).size, 5);
      assert.ok(!titles.includes(''));
    }));
  });
}
