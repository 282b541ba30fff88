import assert from 'node:assert/strict';
import { readFile, readdir } from 'node:fs/promises';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour, sitePage } from '../support/tour.mjs';

// Style sheets and scripts as tours keep them that were saved by former versions.
const folders = ['../older/1.09', '../../ui/older-tour'].map((name) => fileURLToPath(new URL(name, import.meta.url)));

const ownStyle = 'h5 { color: #123456; } body { font-family: serif; }';
const otherLetters = numberedStops(3).map((stop, index) => ({
  ...stop,
  title: `Gr\u00f6\u00dfe ${index + 1} &#1046;`,
  narration: `\u00dcber den Fluss, \u00abja\u00bb &#26085;&#26412;. ${index + 1}`,
}));
const ownNames = ['tourist.htm', 'words.htm', 'layout.htm']
  .map((address, index) => ({ title: `Own ${index + 1}`, address, narration: '<a href="words.htm">More</a>' }));

// What tours of a former version hold, each in another way.
const kinds = [
  { name: 'no stop', stops: [] },
  { name: 'one stop', stops: numberedStops(1) },
  { name: 'a hundred stops', stops: numberedStops(100) },
  { name: 'a style sheet of its own', stops: numberedStops(3), files: { 'tour.css': ownStyle } },
  { name: 'letters of other languages', stops: otherLetters },
  {
    name: 'pages with names of its own',
    stops: ownNames,
    files: Object.fromEntries(ownNames.map(({ address, title }) => [address, sitePage(title)])),
  },
  { name: 'stops that are loaded ahead', stops: numberedStops(4), commands: ['#AutoBuffer', '#BufferDelay = 10'] },
  { name: 'a launching point', stops: numberedStops(2), commands: ['#LaunchURL = http://127.0.0.1/start.htm'] },
  { name: 'frames of other sizes', stops: numberedStops(2), commands: ['#NarHeight = 240', '#AdvWidth = 0', '#NavWidth = 200'] },
  { name: 'tags that are not closed', stops: numberedStops(3).map((stop) => ({ ...stop, title: `<i>${stop.title}`, narration: '<p><b>Words' })) },
];

async function readSupportFiles(folder) {
  const files = {};
  for (const name of await readdir(folder)) {
    if (name !== 'script.txt')
      files[name] = await readFile(join(folder, name), 'latin1');
  }
  return files;
}

/** A tour keeps its own scripts and style sheet, while its pages are always made from the newest templates. */
export function older(context) {
  for (const folder of folders) {
    describe(`a tour with the scripts of ${folder.split('/').pop()}`, () => {
      let tour;
      before(async () => { tour = await publishTour({ stops: numberedStops(5), files: await readSupportFiles(folder) }); });
      after(() => tour.remove());
      const visit = (test) => context.visit(tour.folder, test);

      it('plays by buttons, keys and contents', () => visit(async (visitor) => {
        await visitor.openTour();
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        await visitor.arriveAt(tour.stops[1], () => visitor.key('ArrowRight'));
        await visitor.arriveAt(tour.stops[0], () => visitor.press('previous'));
        await visitor.chooseInContents(tour.stops[3]);
        await visitor.arriveAt(tour.stops[4], () => visitor.press('next'));
        await visitor.load('mw', 'openhelp.htm', () => visitor.press('exit'));
      }));

      it('shows its words and nothing that its scripts do not know', () => visit(async (visitor) => {
        await visitor.openTour();
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
        const shown = await (await visitor.frame('nar')).evaluate(() => ({
          isVisible: document.querySelector('main').checkVisibility({ checkVisibilityCSS: true }),
          buttons: [...document.querySelectorAll('button')].filter((button) => button.checkVisibility()).length,
        }));
        assert.deepEqual(shown, { isVisible: true, buttons: 0 });
        const navigator = await visitor.frame('nav');
        const controls = await navigator.$$eval('a, button', (all) => all
          .filter((control) => control.checkVisibility()).map((control) => control.textContent));
        assert.deepEqual(controls, ['Previous stop', 'Next stop', 'Contents', 'Exit from the tour']);
      }));
    });
  }

  kinds.forEach(({ name, stops, commands, files = {} }, index) => {
    const folder = folders[index % folders.length];
    it(`a tour with ${name} plays with the scripts of ${folder.split('/').pop()}`, async () => {
      const tour = await publishTour({ stops, commands, files: { ...await readSupportFiles(folder), ...files } });
      try {
        await context.visit(tour.folder, async (visitor) => {
          await visitor.openTour();
          if (stops.length === 0) {
            assert.equal(await visitor.isUsable('next'), false);
            return;
          }
          const { narration } = await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
          assert.ok(narration.includes('1\u2014'), narration);
          await visitor.chooseInContents(tour.stops.at(-1));
          assert.equal(await visitor.isUsable('next'), false);
          await visitor.load('mw', 'openhelp.htm', () => visitor.press('exit'));
        });
      } finally {
        await tour.remove();
      }
    });
  });
}
