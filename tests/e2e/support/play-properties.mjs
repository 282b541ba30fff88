// Plays the tour whose properties tests/e2e/properties has changed, in Chromium, from a web server and from disk.
// Arguments: the tour's folder, the width of its logo in pixels.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from '../../player/support/browsers.mjs';
import { Visitor } from '../../player/support/player.mjs';
import { readStops } from '../../player/support/tour.mjs';
import { ways } from '../../player/support/ways.mjs';

const [folder, width] = process.argv.slice(2);
const logoWidth = Number(width);
const startPage = 'http://127.0.0.1/start.htm';

const sizesOfFrames = (visitor) => visitor.page.evaluate(() => Object.fromEntries(
  [...document.querySelectorAll('frame')].map((frame) => [frame.name, [frame.clientWidth, frame.clientHeight]])));

async function play(visitor, stops) {
  await visitor.openTour('_tourlaunch2.htm');
  const sizes = await sizesOfFrames(visitor);
  // What the author chose is the least; buttons and words get the room that they need.
  assert.ok(sizes.nar[1] >= 160, 'height of the narration');
  assert.equal(sizes.logo[0], 80, 'width of the logo');
  assert.ok(sizes.nav[0] >= 120, 'width of the navigator');

  const { text: opening } = await visitor.loaded('mw', 'openhelp.htm');
  assert.match(opening, /Rivers of Europe/);
  assert.match(opening, /Ann Other/);
  const logo = await visitor.frame('logo');
  assert.equal(await logo.$eval('img', (image) => image.naturalWidth), logoWidth, 'width of the picture');

  const { narration } = await visitor.arriveAt(stops[0], () => visitor.press('next'));
  assert.match(narration, /Click the Next button/, 'the automatic instruction');
  const aheads = visitor.happened.entries.filter(
    (event) => event.what === 'load' && event.frame === 'loading' && event.url.includes('page'));
  assert.deepEqual(aheads, [], 'nothing is loaded ahead');
  visitor.assertQuiet();

  const requested = visitor.page.waitForRequest(startPage);
  await visitor.press('exit');
  await requested;
}

assert.match(await readFile(join(folder, '_tourlaunch2.htm'), 'latin1'), /bufDelay = 50000\r\nbufFlag = false/);
const stops = readStops(await readFile(join(folder, 'script.txt'), 'latin1'));
const browser = await launchBrowser('chromium');
try {
  for (const way of ['from a web server', 'from disk']) {
    const { base, close } = await ways[way](folder);
    const visitor = await Visitor.arrive(browser, base);
    await play(visitor, stops);
    await visitor.leave();
    await close();
  }
} finally {
  await browser.close();
}
