import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishFolder, publishTour, sampleFolder } from '../support/tour.mjs';

const plain = (text) => text.replace(/<[^>]*>|\s+|&#?\w+;/g, '');

/** The narration frame shows this stop's own words. */
function assertNarration(stop, shown) {
  const words = plain(stop.narration).slice(0, 60);
  assert.ok(plain(shown.narration).includes(words), `stop ${stop.number} should say "${words}"`);
}

async function stepThrough(visitor, stops, next, previous) {
  for (const stop of stops)
    assertNarration(stop, await visitor.arriveAt(stop, next));
  for (const stop of stops.slice(0, -1).reverse())
    assertNarration(stop, await visitor.arriveAt(stop, previous));
}

function sampleTour(context) {
  let tour;
  before(async () => { tour = await publishFolder(sampleFolder); });
  after(() => tour.remove());
  const visit = (test) => context.visit(tour.folder, async (visitor) => {
    await visitor.openTour();
    await test(visitor);
  });

  it('reaches every stop by Next and goes back by Previous', () => visit(async (visitor) => {
    await stepThrough(visitor, tour.stops, () => visitor.press('next'), () => visitor.press('previous'));
  }));

  it('reaches every stop by the arrow keys', () => visit(async (visitor) => {
    await stepThrough(visitor, tour.stops, () => visitor.key('ArrowRight'), () => visitor.key('ArrowLeft'));
  }));

  it('reaches every stop from the contents page', () => visit(async (visitor) => {
    for (const stop of tour.stops)
      assertNarration(stop, await visitor.chooseInContents(stop));
  }));
}

function largestTour(context) {
  let tour;
  before(async () => { tour = await publishTour({ stops: numberedStops(100) }); });
  after(() => tour.remove());

  it('reaches all 100 stops by Next, by the keyboard and from the contents page', () =>
    context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await stepThrough(visitor, tour.stops, () => visitor.press('next'), () => visitor.key('ArrowLeft'));
      await visitor.openContents();
      const links = await (await visitor.frame('mw')).$$eval('a', (all) => all.map((a) => a.getAttribute('href')));
      assert.deepEqual(links, tour.stops.map((stop) => `page${stop.number}.htm`));
      for (const number of [100, 51, 1])
        assertNarration(tour.stops[number - 1], await visitor.chooseInContents(tour.stops[number - 1]));
    }));
}

function smallTours(context) {
  const publishStops = (count) => publishTour({ stops: numberedStops(count) });

  it('offers neither Next nor Previous in a tour without stops', async () => {
    const tour = await publishStops(0);
    await context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      assert.equal(await visitor.isUsable('next'), false);
      assert.equal(await visitor.isUsable('previous'), false);
      await visitor.press('next');
      await visitor.key('ArrowRight');
      await visitor.openContents();
      const contents = await visitor.frame('mw');
      assert.equal(await contents.$$eval('a', (links) => links.length), 0);
      assert.ok(!visitor.happened.entries.some((event) => event.url === visitor.url('page1.htm')));
    });
    await tour.remove();
  });

  it('begins and ends a tour of one stop', async () => {
    const tour = await publishStops(1);
    await context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.navigatorShows('1 of 1');
      assert.equal(await visitor.isUsable('next'), false);
      await visitor.load('mw', 'openhelp.htm', () => visitor.press('previous'));
      await visitor.navigatorShows('Start');
      assert.equal(await visitor.isUsable('previous'), false);
    });
    await tour.remove();
  });
}

function history(context) {
  let tour;
  before(async () => { tour = await publishTour({ stops: numberedStops(4) }); });
  after(() => tour.remove());

  it('makes one entry in the history for each stop, which Back and Forward follow', () =>
    context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      const [first, second, third] = tour.stops;
      const lengthBefore = await visitor.historyLength();
      for (const stop of [first, second, third])
        await visitor.arriveAt(stop, () => visitor.press('next'));
      assert.equal(await visitor.historyLength(), lengthBefore + 3);
      await visitor.arriveAt(second, () => visitor.page.evaluate(() => history.back()));
      await visitor.navigatorShows('2 of 4');
      await visitor.arriveAt(third, () => visitor.page.evaluate(() => history.forward()));
      await visitor.arriveAt(second, () => visitor.press('previous'));
    }));

  it('comes back to the opening page by Back', () => context.visit(tour.folder, async (visitor) => {
    await visitor.openTour();
    await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
    await visitor.load('mw', 'openhelp.htm', () => visitor.page.evaluate(() => history.back()));
    await visitor.navigatorShows('Start');
    await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
  }));

  it('shows the same stop again after a reload', () => context.visit(tour.folder, async (visitor) => {
    await visitor.openTour();
    const [first, second, third] = tour.stops;
    await visitor.arriveAt(first, () => visitor.press('next'));
    await visitor.arriveAt(second, () => visitor.press('next'));
    await visitor.arriveAt(second, () => visitor.page.reload());
    await visitor.navigatorShows('2 of 4');
    await visitor.arriveAt(third, () => visitor.press('next'));
    await visitor.arriveAt(second, () => visitor.page.evaluate(() => history.back()));
  }));

  it('goes two stops on when Next is pressed twice before the first has arrived', () =>
    context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[1], async () => {
        const navigator = await visitor.frame('nav');
        await navigator.$eval('[data-go="next"]', (button) => { button.click(); button.click(); });
      });
      await visitor.navigatorShows('2 of 4');
    }));
}

/** Every stop can be reached, in tours of any size, and shows its own page and its own narration. */
export function stepping(context) {
  describe('the sample tour', () => sampleTour(context));
  // It takes long. On disk pages are strangers to each other, so what plays there plays on servers.
  if (context.way === 'from disk')
    describe('a tour of 100 stops', () => largestTour(context));
  describe('small tours', () => smallTours(context));
  describe('the history of the browser', () => history(context));
}
