import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { serveFolder } from '../support/server.mjs';
import { numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

/** Where Exit leads. */
export function leaving(context) {
  describe('Exit', () => {
    let tour;
    let elsewhere;
    let remote;
    before(async () => {
      elsewhere = await scratchFolder();
      remote = await serveFolder(elsewhere.folder);
      await writePage(elsewhere.folder, 'far-start.htm', sitePage('Far start'));
      tour = await publishTour({
        stops: numberedStops(3),
        commands: [
          `#LaunchURL = ${remote.origin}far-start.htm`,
          '#LaunchURL = near-start.htm',
          '#LaunchURL = www.launch.example/start.htm',
        ],
        files: {
          'near-start.htm': sitePage('Near start', '<a href="playtour.htm">Tour</a>'),
          'new-window.htm': sitePage('New window', '<a href="playtour.htm" target="_self">Tour</a>'),
        },
      });
    });
    after(async () => {
      await remote.close();
      await elsewhere.remove();
      await tour.remove();
    });

    const visit = (test, options) => context.visit(tour.folder, test, { allowed: [remote.origin], ...options });
    const exit = (visitor) => visitor.press('exit');

    /** Follows the link of a page to the tour and goes some stops on. */
    async function startFrom(visitor, page) {
      await visitor.open(page);
      await visitor.load('top', 'playtour.htm', () => visitor.page.click('a'));
      await visitor.navigatorShows('Start');
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
    }

    it('leads to a launching point on another server', () => visit(async (visitor) => {
      await visitor.openTour('_tourlaunch1.htm');
      await visitor.load('top', `${remote.origin}far-start.htm`, () => exit(visitor));
    }));

    it('leads to a launching point beside the tour', () => visit(async (visitor) => {
      await visitor.openTour('_tourlaunch2.htm');
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.load('top', 'near-start.htm', () => exit(visitor));
    }));

    // These places are out of reach here, so that the browser complains; that it tries to get there is enough.
    for (const [frameset, host] of [['_tourlaunch3.htm', 'www.launch.example'], ['fv1.htm', 'www.brenholt.example']]) {
      it(`leads from ${frameset} to its host, which is written without a scheme`, () => visit(async (visitor) => {
        await visitor.openTour(frameset);
        const since = context.browser.outside.length;
        await Promise.all([
          context.browser.outside.waitFor((request) => request.host === `${host}:443`, host, { since }),
          exit(visitor),
        ]);
      }, { quiet: false }));
    }

    it('leads back to the page that the tour was started from', () => visit(async (visitor) => {
      await startFrom(visitor, 'near-start.htm');
      await visitor.load('top', 'near-start.htm', () => exit(visitor));
    }));

    it('leads back to that page also after Back and a reload', () => visit(async (visitor) => {
      await startFrom(visitor, 'near-start.htm');
      await visitor.arriveAt(tour.stops[0], () => visitor.page.evaluate(() => history.back()));
      await visitor.arriveAt(tour.stops[0], () => visitor.page.reload());
      await visitor.load('top', 'near-start.htm', () => exit(visitor));
    }));

    it('leads back to the very page on another server that the tour was started from', () =>
      visit(async (visitor, base) => {
        if (base.startsWith('file:'))
          return; // Pages on a server cannot link to files.
        await writePage(elsewhere.folder, 'deep-start.htm',
          sitePage('Deep start', `<a href="${base}playtour.htm">Tour</a>`));
        await startFrom(visitor, `${remote.origin}deep-start.htm`);
        await visitor.load('top', `${remote.origin}deep-start.htm`, () => exit(visitor));
      }));

    it('leads to the opening page when the tour was started from no page', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.load('mw', 'openhelp.htm', () => exit(visitor));
      await visitor.navigatorShows('Start');
      assert.equal(visitor.page.url(), visitor.url('playtour.htm'));
    }));

    it('leads to the opening page also when the contents page is open before the first stop', () =>
      visit(async (visitor) => {
        await visitor.openTour();
        await visitor.openContents();
        await visitor.load('mw', 'openhelp.htm', () => exit(visitor));
      }));

    it('leads back to the page that had linked to a single stop', () => visit(async (visitor) => {
      await writePage(tour.folder, 'stop-link.htm', sitePage('Link', '<a href="page2.htm">Stop</a>'));
      await visitor.open('stop-link.htm');
      await Promise.all([visitor.announced(2), visitor.page.click('a')]);
      await visitor.load('top', 'stop-link.htm', () => exit(visitor));
    }));
  });
}
