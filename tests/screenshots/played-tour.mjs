#!/usr/bin/env node
// Renders the sample tour as visitors see it: node played-tour.mjs FOLDER [chromium|firefox]
// The pictures are PNG files in FOLDER. WENDMARK_TOUR names the program that publishes the tour.
import { mkdir } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from '../player/support/browsers.mjs';
import { Visitor } from '../player/support/player.mjs';
import { publishFolder, sampleFolder } from '../player/support/tour.mjs';
import { ways } from '../player/support/ways.mjs';

const wide = { width: 1366, height: 768 };
const narrow = { width: 320, height: 640 };

/** What is shown in each picture: how the visitor gets there. */
const scenes = {
  opening: (visitor) => visitor.openTour(),
  stop: async (visitor, stops) => {
    await visitor.openTour();
    await visitor.arriveAt(stops[0], () => visitor.press('next'));
    await visitor.arriveAt(stops[1], () => visitor.press('next'));
    await visitor.navigatorShows(`2 of ${stops.length}`);
  },
  contents: async (visitor, stops) => {
    await scenes.stop(visitor, stops);
    await visitor.openContents();
  },
  guide: (visitor) => visitor.open('tguide.htm'),
  index: (visitor) => visitor.open('index.htm'),
};

async function takePictures({ folder, tour, browserName, label, window, dark }) {
  const browser = await launchBrowser(browserName, { dark });
  const { base, close } = await ways['from a web server'](tour.folder);
  for (const [name, goThere] of Object.entries(scenes)) {
    const visitor = await Visitor.arrive(browser, base, window);
    await goThere(visitor, tour.stops);
    const path = join(folder, `played-tour-${name}-${label}.png`);
    await visitor.page.screenshot({ path });
    console.log(path);
    await visitor.leave();
  }
  await close();
  await browser.close();
}

const [folder, browserName = 'chromium'] = process.argv.slice(2);
if (!folder) {
  console.error('Usage: played-tour.mjs FOLDER [chromium|firefox]');
  process.exit(2);
}
await mkdir(folder, { recursive: true });
const tour = await publishFolder(sampleFolder);
const common = { folder, tour, browserName };
await takePictures({ ...common, label: 'wide', window: wide, dark: false });
await takePictures({ ...common, label: 'wide-dark', window: wide, dark: true });
await takePictures({ ...common, label: 'narrow', window: narrow, dark: false });
await takePictures({ ...common, label: 'narrow-dark', window: narrow, dark: true });
await tour.remove();
