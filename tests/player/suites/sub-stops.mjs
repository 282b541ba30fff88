import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { serveFolder } from '../support/server.mjs';
import { numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

const subStopLink = (address, text) => `<a HREF="javascript:loadSubStop('${address}');">${text}</A>`;

/** Links in narrations: to sub-stops, and to pages. */
export function subStops(context) {
  describe('links in narrations', () => {
    let tour;
    let elsewhere;
    let remote;
    before(async () => {
      elsewhere = await scratchFolder();
      await writePage(elsewhere.folder, 'far.htm', sitePage('Far away'));
      remote = await serveFolder(elsewhere.folder);
      const stops = numberedStops(3);
      stops[1].narration = [
        subStopLink('near.htm', 'near'),
        subStopLink(`${remote.origin}far.htm`, 'far'),
        subStopLink('javascript:document.title=1', 'script'),
        `<a href="${remote.origin}far.htm?link">page</a>`,
      ].join(' and ');
      tour = await publishTour({ stops, files: { 'near.htm': sitePage('Near by') } });
    });
    after(async () => {
      await remote.close();
      await elsewhere.remove();
      await tour.remove();
    });

    const visitSecondStop = (test) => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      await test(visitor);
      await visitor.navigatorShows('2 of 3');
      await visitor.arriveAt(tour.stops[2], () => visitor.press('next'));
    }, { allowed: [remote.origin] });
    const clickLink = (visitor, position) => visitor.click('nar', `main a:nth-of-type(${position})`);

    it('shows a file of the tour in the site frame while the stop stays the same', () =>
      visitSecondStop((visitor) => visitor.load('mw', 'near.htm', () => clickLink(visitor, 1))));

    it('shows a remote address as it stands', () =>
      visitSecondStop((visitor) => visitor.load('mw', `${remote.origin}far.htm`, () => clickLink(visitor, 2))));

    it('goes back from a sub-stop to the page of the stop by Back', () =>
      visitSecondStop(async (visitor) => {
        await visitor.load('mw', 'near.htm', () => clickLink(visitor, 1));
        await visitor.load('mw', 'site2.htm', () => visitor.page.evaluate(() => history.back()));
      }));

    it('never runs an address as script', () => visitSecondStop(async (visitor) => {
      const titleBefore = await (await visitor.frame('nar')).title();
      await clickLink(visitor, 3);
      await visitor.load('mw', 'near.htm', () => clickLink(visitor, 1));
      assert.equal(await (await visitor.frame('nar')).title(), titleBefore);
      assert.equal(await visitor.page.title(), '2. Title 2 - Test tour');
    }));

    it('opens an ordinary link in the site frame', () => visitSecondStop(async (visitor) => {
      await (await visitor.frame('nar')).waitForSelector('main a[target="mw"]');
      await visitor.load('mw', `${remote.origin}far.htm?link`, () => clickLink(visitor, 4));
    }));

    it('opens a sub-stop from the guide', () => context.visit(tour.folder, async (visitor) => {
      await visitor.open('tguide.htm');
      await visitor.load('top', 'near.htm', () => visitor.page.click('a[href*="near.htm"]'));
    }));
  });
}
