// Plays a tour's folder in Chromium, from a web server and from disk, with Next, to its last stop. From disk only a tour
// of its own pages: there a frame that is driven from outside hangs between pages of strangers.
// Arguments: the folder, then the titles that its stops should have.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from '../../player/support/browsers.mjs';
import { Visitor } from '../../player/support/player.mjs';
import { readStops } from '../../player/support/tour.mjs';
import { ways } from '../../player/support/ways.mjs';

const [folder, ...titles] = process.argv.slice(2);

async function play(visitor, stops) {
  await visitor.openTour();
  for (const stop of stops) {
    const { narration } = await visitor.arriveAt(stop, () => visitor.press('next'));
    assert.match(narration, new RegExp(`${stop.number}\\W+${stop.title}`));
    await visitor.navigatorShows(`${stop.number} of ${stops.length}`);
  }
  assert.equal(await visitor.isUsable('next'), false, 'nothing should come after the last stop');
  visitor.assertQuiet({ allowed: stops.map(({ address }) => address).filter((address) => address.includes('/')) });
}

const stops = readStops(await readFile(join(folder, 'script.txt'), 'latin1'));
assert.deepEqual(stops.map(({ title }) => title), titles);
const browser = await launchBrowser('chromium');
try {
  const hasOwnPages = stops.every(({ address }) => !address.includes('/'));
  for (const way of ['from a web server', ...(hasOwnPages ? ['from disk'] : [])]) {
    const { base, close } = await ways[way](folder);
    const visitor = await Visitor.arrive(browser, base);
    await play(visitor, stops);
    await visitor.leave();
    await close();
  }
} finally {
  await browser.close();
}
