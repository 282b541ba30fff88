import assert from 'node:assert/strict';
import { readFile, readdir } from 'node:fs/promises';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

// Style sheets and scripts as tours keep them that were saved by former versions.
const folders = ['../older/1.09', '../../ui/older-tour'].map((name) => fileURLToPath(new URL(name, import.meta.url)));

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
}
