import assert from 'node:assert/strict';
import { cp, rm } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { serveFolder } from '../support/server.mjs';
import { numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

/** What stands in the site frame until the page of a stop has come: never the page of another stop. */
export function waiting(context) {
  describe('waiting for the page of a stop', () => {
    const count = 6;
    let elsewhere;
    let remote;
    let tour;
    before(async () => {
      elsewhere = await scratchFolder();
      for (let n = 1; n <= count; n += 1)
        await writePage(elsewhere.folder, `far${n}.htm`, sitePage(`Far ${n}`));
      await writePage(elsewhere.folder, 'far.bin', 'no page');
      remote = await serveFolder(elsewhere.folder);
      const stops = numberedStops(count).map((stop, index) => (
        { ...stop, address: `${remote.origin}far${index + 1}.htm` }));
      stops[3].address = `${remote.origin}far.bin`;
      stops[4].address = 'http:/wrong';
      stops[5].address = 'http://insecure.example/';
      tour = await publishTour({ stops });
    });
    after(async () => {
      await remote.close();
      await elsewhere.remove();
      await tour.remove();
    });

    const visit = (test, options) => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await test(visitor);
    }, { allowed: [remote.origin], ...options });
    const waitingPage = (visitor, { address }) => visitor.url(`tourwait.htm?${encodeURIComponent(address)}`);
    const readWaiting = async (visitor) => (await visitor.waitIn('mw', () => document.querySelector('.waiting'))).evaluate(() => ({
      url: location.href,
      words: document.querySelector('main').textContent,
      link: document.querySelector('.buttons a').href,
      target: document.querySelector('.buttons a').target,
    }));

    /** Goes to a stop whose page does not come, and comes back when its words can be read. */
    async function goTo(visitor, stop, go = () => visitor.press('next')) {
      const since = visitor.happened.length;
      await Promise.all([visitor.wordsShown(stop, { since }), visitor.announced(stop.number, { since }), go()]);
    }

    const drivable = { skip: !context.goesFromServerToServer };
    const choose = (visitor, number) => visitor.click('mw', `a[href="page${number}.htm"]`);

    it('shows the words of each stop only when the page of the former one is gone', drivable, () => visit(async (visitor) => {
      for (const stop of tour.stops.slice(0, 3)) {
        const { pathname } = new URL(stop.address);
        remote.hold(pathname);
        const since = visitor.happened.length;
        await Promise.all([visitor.wordsShown(stop, { since }), visitor.press('next')]);
        // Nothing is waited for here: what is in the site frame now was there when the words appeared, or is later.
        const shown = await (await visitor.frame('mw')).evaluate(() => location.href);
        assert.equal(shown, waitingPage(visitor, stop));
        remote.release(pathname);
        await visitor.loaded('mw', stop.address);
      }
    }));

    it('says which page opens while it is slow, and gives way to it', drivable, () => visit(async (visitor) => {
      const [first, second, third] = tour.stops;
      await visitor.arriveAt(first, () => visitor.press('next'));
      const lengthBefore = await visitor.historyLength();
      remote.hold('/far2.htm');
      await goTo(visitor, second);
      const shown = await readWaiting(visitor);
      assert.equal(shown.url, waitingPage(visitor, second));
      assert.ok(shown.words.includes(new URL(second.address).host));
      assert.equal(shown.link, second.address);
      assert.equal(shown.target, '_blank');
      const since = visitor.happened.length;
      remote.release('/far2.htm');
      await visitor.loaded('mw', second.address, { since });
      assert.equal(await visitor.historyLength(), lengthBefore + 1);
      await visitor.arriveAt(third, () => visitor.press('next'));
      await visitor.arriveAt(second, () => visitor.page.evaluate(() => history.back()));
      await visitor.arriveAt(first, () => visitor.page.evaluate(() => history.back()));
    }));

    it('can be left while it waits, by Back too', drivable, () => visit(async (visitor) => {
      const [first, second, third] = tour.stops;
      await visitor.arriveAt(first, () => visitor.press('next'));
      remote.hold('/far2.htm');
      await goTo(visitor, second);
      await visitor.arriveAt(first, () => visitor.page.evaluate(() => history.back()));
      await goTo(visitor, second);
      await visitor.arriveAt(third, () => visitor.press('next'));
      remote.release('/far2.htm');
    }));

    it('stays where the page of a stop is a download', drivable, () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const asked = remote.requests.length;
      await visitor.openContents();
      await goTo(visitor, tour.stops[3], () => choose(visitor, 4));
      await remote.requests.waitFor(({ path }) => path === '/far.bin', 'the download', { since: asked });
      assert.equal((await readWaiting(visitor)).url, waitingPage(visitor, tour.stops[3]));
      await visitor.arriveAt(tour.stops[2], () => visitor.press('previous'));
    }, { quiet: false }));

    it('is done without where its file is missing', drivable, async () => {
      const copy = await scratchFolder();
      await cp(tour.folder, copy.folder, { recursive: true });
      await rm(join(copy.folder, 'tourwait.htm'));
      await context.visit(copy.folder, async (visitor) => {
        await visitor.openTour();
        for (const stop of tour.stops.slice(0, 3)) {
          const since = visitor.happened.length;
          await Promise.all([visitor.wordsShown(stop, { since }), visitor.arriveAt(stop, () => visitor.press('next'))]);
        }
      }, { quiet: false });
      await copy.remove();
    });

    if (context.way === 'from a web server with https') {
      it('tells at once that a page without encryption cannot be shown, and asks for none', () => visit(async (visitor) => {
        const asked = context.browser.outside.length;
        await visitor.openContents();
        await goTo(visitor, tour.stops[5], () => choose(visitor, 6));
        const shown = await readWaiting(visitor);
        assert.match(shown.words, /begins with http and that of the tour with https/);
        assert.equal(shown.link, tour.stops[5].address);
        await goTo(visitor, tour.stops[4], () => visitor.press('previous'));
        const hosts = context.browser.outside.since(asked).map(({ host }) => host);
        assert.ok(!hosts.some((host) => host.startsWith('insecure.example')));
      }));
    }

    it('opens nothing outside the tour, and leads there', () => context.visit(tour.folder, async (visitor) => {
      const since = remote.requests.length;
      await visitor.open(`tourwait.htm?${encodeURIComponent(`${remote.origin}far1.htm`)}`);
      await visitor.load('top', 'playtour.htm', () => visitor.page.click('.buttons a'));
      assert.deepEqual(remote.requests.since(since), []);
    }));
  });
}
