import assert from 'node:assert/strict';
import { cp, rm } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { serveFolder } from '../support/server.mjs';
import { editFile, numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

const homeSite = 'https://www.brenholt.example/';

/** Stop pages that are opened without the tour around them. */
export function standAlone(context) {
  describe('a stop page opened on its own', () => {
    let tour;
    let home;
    let homeFolder;
    before(async () => {
      tour = await publishTour({ stops: numberedStops(3) });
      homeFolder = await scratchFolder();
      await writePage(homeFolder.folder, 'home.htm', sitePage('Home'));
      home = await serveFolder(homeFolder.folder);
    });
    after(async () => {
      await home.close();
      await homeFolder.remove();
      await tour.remove();
    });

    /** A copy of the tour whose stop pages have a home site that can be reached here. */
    async function visitCopy(change, test) {
      const copy = await scratchFolder();
      await cp(tour.folder, copy.folder, { recursive: true });
      await editFile(join(copy.folder, 'page2.htm'), homeSite, `${home.origin}home.htm`);
      await change(copy.folder);
      await context.visit(copy.folder, test, { quiet: false });
      await copy.remove();
    }
    const homeWasAsked = () => home.requests.entries.some(({ path }) => path === '/home.htm');

    it('brings the visitor into the tour at that stop', () => context.visit(tour.folder, async (visitor) => {
      await visitor.page.goto(visitor.url('page2.htm'));
      await visitor.announced(2);
      await visitor.loaded('mw', 'site2.htm');
      await visitor.navigatorShows('2 of 3');
      assert.equal(new URL(visitor.page.url()).pathname, new URL(visitor.url('playtour.htm')).pathname);
      await visitor.arriveAt(tour.stops[2], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('previous'));
    }));

    it('brings the visitor into the tour from inside a page that is no tour', () =>
      context.visit(tour.folder, async (visitor) => {
        await writePage(tour.folder, 'frame.htm',
          sitePage('Page with a frame', '<iframe name="foreign" title="Stop" src="page2.htm"></iframe>'));
        await visitor.open('frame.htm');
        await visitor.announced(2);
        assert.equal(visitor.page.url(), visitor.url('frame.htm'));
      }));

    it('leaves the home site alone while the tour can be reached', () => visitCopy(async () => {}, async (visitor) => {
      await visitor.page.goto(visitor.url('page2.htm'));
      await visitor.announced(2);
      await visitor.arriveAt(tour.stops[2], () => visitor.press('next'));
      assert.equal(homeWasAsked(), false);
    }));

    it('leads to the home site where the tour is gone', () => visitCopy(
      (folder) => rm(join(folder, 'playtour.htm')),
      async (visitor) => {
        await Promise.all([
          visitor.loaded('top', `${home.origin}home.htm`),
          visitor.page.goto(visitor.url('page2.htm')),
        ]);
      }));

    it('leads to the home site where nothing but the page is left', () => visitCopy(
      async (folder) => {
        for (const name of ['playtour.htm', 'tourshared.js', 'tourpage.js', 'tourstop.js'])
          await rm(join(folder, name));
      },
      async (visitor) => {
        const arrived = visitor.loaded('top', `${home.origin}home.htm`);
        // The page is left before it has loaded, which the browser may report as a failure.
        await visitor.page.goto(visitor.url('page2.htm')).catch(() => {});
        await arrived;
      }));
  });
}
