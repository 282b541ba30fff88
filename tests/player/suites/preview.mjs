import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { stopTag } from '../support/player.mjs';
import { numberedStops, publishTour, writePage } from '../support/tour.mjs';

/** Writes the frameset that the editor shows for one stop, from the working copy's own frameset. */
async function writePreviewFrameset(folder, stop) {
  const text = await readFile(join(folder, 'framever.htm'), 'latin1');
  const preview = text
    .replace(/^<frame src = "openhelp\.htm".*$/m, '<frame src = "" name="mw" marginwidth="10" marginheight="10" >')
    .replace(/^<frame src="lower\.htm".*$/m, `<frame src= "page${stop}.htm" name="nar" marginwidth="3" >`);
  assert.ok(preview.includes(`page${stop}.htm`) && preview.includes('src = ""'));
  await writePage(folder, 'tmpframe.htm', preview);
}

/**
 * The opening page announces itself, with no number, where its pages may look at one another: on a web server here,
 * and in the editor. From disk that is up to the browser.
 */
async function announcedOpening(visitor, since) {
  if (visitor.url('').startsWith('http'))
    await visitor.announced('', { since });
}

function openingPage(context) {
  let tour;
  before(async () => {
    const stops = [...numberedStops(1), { title: 'Again', address: 'openhelp.htm', narration: 'Where it began.' }];
    tour = await publishTour({ stops });
  });
  after(() => tour.remove());
  const visit = (test) => context.visit(tour.workingCopy, test);
  const goBackToOpening = async (visitor) => {
    const since = visitor.happened.length;
    await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
    await visitor.load('mw', 'openhelp.htm', () => visitor.press('previous'));
    await visitor.navigatorShows('Start');
    await announcedOpening(visitor, since);
  };

  it('announces itself when the tour begins, and each time that Previous leads to it', () => visit(async (visitor) => {
    await visitor.openTour('framever.htm');
    await announcedOpening(visitor, 0);
    await goBackToOpening(visitor);
    await goBackToOpening(visitor);
  }));

  it('announces itself again when the navigator alone is loaded again', () => visit(async (visitor) => {
    await visitor.openTour('framever.htm');
    await announcedOpening(visitor, 0);
    const since = visitor.happened.length;
    const navigator = await visitor.frame('nav');
    await visitor.load('nav', 'nav3.htm', () => navigator.evaluate(() => location.reload()));
    await announcedOpening(visitor, since);
  }));

  it('announces nothing as the page of a stop', () => visit(async (visitor) => {
    await visitor.openTour('framever.htm');
    await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
    const since = visitor.happened.length;
    await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
    await visitor.navigatorShows('2 of 2');
    await visitor.arriveAt(tour.stops[0], () => visitor.press('previous'));
    const tags = visitor.happened.since(since).filter((event) => event.what === 'status').map(({ text }) => text);
    assert.ok(tags.includes(`${stopTag}2`) && !tags.includes(stopTag));
  }));
}

/** The author's preview of a stop, from the working copy. */
export function preview(context) {
  describe('the opening page', () => openingPage(context));
  describe("the author's preview", () => {
    let tour;
    before(async () => {
      tour = await publishTour({ stops: numberedStops(4), commands: ['#AutoBuffer'] });
      await writePreviewFrameset(tour.workingCopy, 3);
    });
    after(() => tour.remove());
    const visit = (test) => context.visit(tour.workingCopy, test);

    it('shows one stop and announces it on the loaded navigator', () => visit(async (visitor) => {
      const third = tour.stops[2];
      const shown = await visitor.arriveAt(third, () => visitor.page.goto(visitor.url('tmpframe.htm')));
      assert.ok(shown.narration.includes(third.narration));
      await visitor.navigatorShows('3 of 4');
    }));

    it('announces the stops that the author steps to, and the same stop again', () => visit(async (visitor) => {
      const [, second, third, fourth] = tour.stops;
      await visitor.arriveAt(third, () => visitor.page.goto(visitor.url('tmpframe.htm')));
      await visitor.arriveAt(fourth, () => visitor.press('next'));
      await visitor.arriveAt(third, () => visitor.press('previous'));
      await visitor.chooseInContents(second);
      await visitor.chooseInContents(second);
    }));

    it('announces the stop again when the navigator alone is loaded again', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[2], () => visitor.page.goto(visitor.url('tmpframe.htm')));
      const since = visitor.happened.length;
      const navigator = await visitor.frame('nav');
      await Promise.all([visitor.announced(3, { since }), navigator.evaluate(() => location.reload())]);
    }));

    it('names every frame and offers no Exit', () => visit(async (visitor) => {
      await visitor.arriveAt(tour.stops[2], () => visitor.page.goto(visitor.url('tmpframe.htm')));
      const titles = await visitor.page.$$eval('frame', (frames) => frames.map((frame) => frame.title));
      assert.equal(new Set(titles).size, 5);
      assert.ok(!titles.includes(''));
      const navigator = await visitor.frame('nav');
      assert.equal(await navigator.$('[data-go="exit"]'), null);
    }));

    it('says below a page that is tested in a frame what is going on', () => visit(async (visitor) => {
      await writePage(tour.workingCopy, 'ft.htm', `<html lang="en"><head><title>Test</title>
<link rel="icon" href="data:,"></head><frameset rows="*,50"><frame src="site1.htm" name="tw" title="Page">
<frame src="lower.htm" name="bw" title="Test"></frameset></html>`);
      await visitor.open('ft.htm');
      const lower = await visitor.frame('bw');
      assert.match(await lower.$eval('main', (main) => main.innerText), /being tested/);
    }));

    it('loads nothing ahead', () => visit(async (visitor) => {
      await visitor.openTour('framever.htm');
      for (const stop of tour.stops)
        await visitor.arriveAt(stop, () => visitor.press('next'));
      assert.ok(!visitor.happened.entries.some((event) => event.frame === 'loading'));
    }));
  });
}
