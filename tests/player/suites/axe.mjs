import assert from 'node:assert/strict';
import { readdir } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { findViolations } from '../support/axe.mjs';
import { launchBrowser } from '../support/browsers.mjs';
import { editFile, publishFolder, sampleFolder } from '../support/tour.mjs';

/** Opens a page of a published tour. A stop page leads into the tour, so that is what is open then. */
async function openAnyPage(visitor, name) {
  const [isStop, number] = /^page(\d*)\.htm$/.exec(name) ?? [];
  if (!isStop) {
    await visitor.open(name);
    return;
  }
  const since = visitor.happened.length;
  const stop = number || 1; // The template of the stop pages is filled in for stop 1.
  await visitor.goTo(name);
  await visitor.announced(stop, { since });
  await visitor.happened.waitFor(
    (event) => event.what === 'load' && event.frame === 'mw'
      && !/\/(openhelp|tourwait)\.htm/.test(event.url),
    'the page of the stop', { since });
}

/** axe finds nothing in any page of a published tour. */
export function checkedByAxe(context) {
  describe('axe', () => {
    let tour;
    let pages;
    let darkBrowser;
    before(async () => {
      tour = await publishFolder(sampleFolder);
      pages = (await readdir(tour.folder)).filter((name) => name.endsWith('.htm'));
      // The pages that would be loaded ahead are all checked at their stops; nothing may move while axe looks.
      await editFile(join(tour.folder, 'playtour.htm'), 'bufFlag = true', 'bufFlag = false');
      darkBrowser = await launchBrowser(context.browserName, { dark: true });
    });
    after(async () => {
      await darkBrowser.close();
      await tour.remove();
    });

    async function findNothing(visitor, { names = pages, dark = false } = {}) {
      const found = {};
      for (const name of names) {
        await openAnyPage(visitor, name);
        assert.equal(
          await visitor.page.evaluate(() => matchMedia('(prefers-color-scheme: dark)').matches), dark);
        const violations = await findViolations(visitor.page);
        if (violations.length > 0)
          found[name] = violations;
      }
      assert.deepEqual(found, {});
    }

    it('finds nothing in any page and frame', () =>
      context.visit(tour.folder, (visitor) => findNothing(visitor)));

    it('finds nothing with dark colours', () =>
      context.visit(tour.folder, (visitor) => findNothing(visitor, { dark: true }), { browser: darkBrowser }));

    it('finds nothing in a narrow window', () =>
      context.visit(tour.folder, (visitor) => findNothing(visitor, { names: ['index.htm', 'page1.htm', 'toc.htm'] }),
        { width: 320, height: 568 }));
  });
}
