import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { stopTag } from '../support/player.mjs';
import { serveFolder } from '../support/server.mjs';
import {
  editFile, numberedStops, publishTour, scratchFolder, sitePage, writePage,
} from '../support/tour.mjs';

/** Loading stops ahead in the frame of no height. */
export function loadingAhead(context) {
  describe('loading ahead', () => {
    const count = 6;
    const drivable = { skip: !context.goesFromServerToServer };
    let elsewhere;
    let remote;
    before(async () => {
      elsewhere = await scratchFolder();
      for (let n = 1; n <= count; n += 1)
        await writePage(elsewhere.folder, `far${n}.htm`, sitePage(`Far ${n}`));
    });
    after(() => elsewhere.remove());

    /** Stops whose pages come from a server of their own, which can hold them back. */
    async function visit(commands, test) {
      remote = await serveFolder(elsewhere.folder);
      const stops = numberedStops(count).map((stop, index) => (
        { ...stop, address: `${remote.origin}far${index + 1}.htm` }));
      const tour = await publishTour({ stops, commands });
      try {
        await context.visit(tour.folder, (visitor) => test(visitor, tour), { allowed: [remote.origin] });
      } finally {
        await remote.close();
        await tour.remove();
      }
    }

    const loadedAhead = (visitor) => visitor.happened.entries
      .filter((event) => event.what === 'load' && event.frame === 'loading')
      .map((event) => event.url.split('/').pop());
    const aheadOf = (visitor, stop) => visitor.loaded('loading', `${remote.origin}far${stop}.htm`);

    const sitesAhead = (visitor) => loadedAhead(visitor).filter((name) => name.startsWith('far'));

    it('loads the pages of the next three stops, one after the other, and one more with each step', drivable, () =>
      visit(['#AutoBuffer'], async (visitor, tour) => {
        await visitor.openTour();
        await aheadOf(visitor, 3);
        assert.deepEqual(sitesAhead(visitor), ['far1.htm', 'far2.htm', 'far3.htm']);
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        await aheadOf(visitor, 4);
        await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
        await aheadOf(visitor, 5);
        assert.deepEqual(sitesAhead(visitor), ['far1.htm', 'far2.htm', 'far3.htm', 'far4.htm', 'far5.htm']);
      }));

    it('makes no entry in the history', () => visit(['#AutoBuffer'], async (visitor) => {
      await visitor.openTour();
      const lengthBefore = await visitor.historyLength();
      await aheadOf(visitor, 3);
      assert.equal(await visitor.historyLength(), lengthBefore);
    }));

    it('loads nothing where the visitor saves data', drivable, () => visit(['#AutoBuffer'], async (visitor, tour) => {
      await visitor.page.evaluateOnNewDocument(() => {
        Object.defineProperty(Navigator.prototype, 'connection', { get: () => ({ saveData: true }), configurable: true });
      });
      await visitor.openTour();
      for (const stop of tour.stops.slice(0, 3))
        await visitor.arriveAt(stop, () => visitor.press('next'));
      assert.deepEqual(loadedAhead(visitor), []);
    }));

    it('gives pages of other people no right to download', () => visit(['#AutoBuffer'], async (visitor) => {
      remote.hold('/far1.htm');
      await visitor.openTour();
      await remote.requests.waitFor(({ path }) => path === '/far1.htm', 'the request for stop 1');
      const ahead = await visitor.frame('ahead');
      const rights = await ahead.$eval('iframe[name="loading"]', (frame) => [...frame.sandbox].sort());
      assert.deepEqual(rights, ['allow-same-origin', 'allow-scripts']);
      remote.release('/far1.htm');
      await aheadOf(visitor, 3);
    }));

    it('waits for a stop to load before it begins the next, and lets the visitor go on meanwhile', () =>
      visit(['#AutoBuffer'], async (visitor, tour) => {
        remote.hold('/far2.htm');
        await visitor.openTour();
        await remote.requests.waitFor(({ path }) => path === '/far2.htm', 'the request for stop 2');
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        assert.ok(!loadedAhead(visitor).includes('far3.htm'));
        assert.ok(!remote.requests.entries.some(({ path }) => path === '/far3.htm'));
        remote.release('/far2.htm');
        await aheadOf(visitor, 4);
      }));

    it('announces no stop that is only loaded ahead', () => visit(['#AutoBuffer'], async (visitor) => {
      await visitor.openTour();
      await aheadOf(visitor, 3);
      const tags = visitor.happened.entries.filter((event) => event.what === 'status').map(({ text }) => text);
      assert.deepEqual(tags.filter((tag) => tag !== stopTag), []); // Only the opening page may have said something.
      await visitor.navigatorShows('Start');
    }));

    it('goes on to the next stop when one takes longer than it is allowed', () =>
      visit(['#AutoBuffer'], async (visitor, tour) => {
        const allowed = 3000;
        // The shortest time that a script can ask for is ten seconds.
        await editFile(join(tour.folder, 'playtour.htm'), 'bufDelay = 30000', `bufDelay = ${allowed}`);
        remote.hold('/far2.htm');
        await visitor.openTour();
        const requestFor = (stop) => remote.requests.waitFor(
          ({ path }) => path === `/far${stop}.htm`, `the request for stop ${stop}`);
        const [first, third] = [await requestFor(1), await requestFor(3)];
        assert.ok(third.at - first.at > allowed, 'stop 2 should have been given its time');
        await aheadOf(visitor, 3);
        assert.ok(remote.requests.entries.some(({ path }) => path === '/far2.htm'));
        assert.ok(!loadedAhead(visitor).includes('far2.htm'));
      }));

    it('loads nothing ahead when the tour does not ask for it', drivable, () => visit([], async (visitor, tour) => {
      await visitor.openTour();
      for (const stop of tour.stops)
        await visitor.arriveAt(stop, () => visitor.press('next'));
      assert.deepEqual(loadedAhead(visitor), []);
      assert.equal(remote.requests.entries.filter(({ path }) => path.startsWith('/far')).length, count);
    }));
  });
}
