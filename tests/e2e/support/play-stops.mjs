// Plays the tour whose stops tests/e2e/three-stops has chosen and described, in Chromium and Firefox, from a web server.
// Arguments: the tour's folder, the address of the pages on the web.
import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from '../../player/support/browsers.mjs';
import { Visitor } from '../../player/support/player.mjs';
import { readStops } from '../../player/support/tour.mjs';
import { ways } from '../../player/support/ways.mjs';

const [folder, web] = process.argv.slice(2);
const expected = [
  { title: 'The river', address: `${web}river.htm`, site: /Water of the river/, narration: /From its spring/ },
  { title: 'The bridge', address: `${web}bridge.htm`, site: /Arches of the bridge/, narration: /Built of stone/ },
  { title: 'The castle', address: 'castle2.htm', site: /Towers of the second castle/, narration: /High on its rock/ },
];

async function assertPictureAndLink(visitor) {
  const narration = await visitor.frame('nar');
  assert.ok(await narration.$eval('img[src="boat.gif"]', (image) => image.naturalWidth) > 0, 'the picture is shown');
  const links = await narration.$$eval('a', (all) => all.map((link) => [link.textContent.trim(), link.outerHTML]));
  const link = links.find(([text]) => text === 'the map');
  assert.ok(link?.[1].includes(`${web}map.htm`), 'the link leads to the map');
  const { text } = await visitor.load('mw', `${web}map.htm`, async () => {
    const [anchor] = await narration.$$('a[href*="map.htm"], a[onclick*="map.htm"]');
    await anchor.click();
  });
  assert.match(text, /Map of the river/);
}

async function play(visitor, stops) {
  await visitor.openTour();
  for (const [index, stop] of stops.entries()) {
    const { narration, site } = await visitor.arriveAt(stop, () => visitor.press('next'));
    assert.match(site, expected[index].site);
    assert.match(narration, expected[index].narration);
    assert.ok(narration.includes(stop.title), `the narration is headed "${stop.title}"`);
    if (index === 0)
      await assertPictureAndLink(visitor);
  }
  visitor.assertQuiet({ allowed: [web] });
}

const stops = readStops(await readFile(join(folder, 'script.txt'), 'latin1'));
assert.deepEqual(
  stops.map(({ title, address }) => ({ title, address })),
  expected.map(({ title, address }) => ({ title, address })),
);
for (const name of ['chromium', 'firefox']) {
  const browser = await launchBrowser(name);
  try {
    const { base, close } = await ways['from a web server'](folder);
    const visitor = await Visitor.arrive(browser, base);
    await play(visitor, stops);
    await visitor.leave();
    await close();
  } finally {
    await browser.close();
  }
}
