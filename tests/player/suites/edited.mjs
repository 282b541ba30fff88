import assert from 'node:assert/strict';
import { cp } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import {
  copyTemplates, editFile, numberedStops, publishTour, scratchFolder, standardInstructions,
} from '../support/tour.mjs';

/** Changes as an author makes them who wants another look. */
async function editTemplates(folder) {
  const edit = (name, from, to) => editFile(join(folder, name), from, to);
  const addLine = (name, before, line) => edit(name, before, `${line}\n${before}`);
  await edit('tour.css', '--paper: #fbfaf6;', '--paper: #fff3d6;');
  await addLine('page.htm', '<main', '<p id="banner">Our museum</p>');
  await addLine('page.htm', '<p class="address">', '<hr>');
  await addLine('framever.htm', '<meta name="viewport"', '<meta name="author" content="Our museum">');
  await edit('framever.htm', 'scrolling="no" noresize', 'noresize');
  await addLine('openhelp.htm', '<h2 data-word="how">', '<p>Welcome to our museum.</p>');
  await addLine('toc.htm', '<p class="kicker" data-word="contents">', '<p id="banner">Our museum</p>');
  await addLine('tguide.htm', '<p class="kicker" data-word="guide">', '<p id="banner">Our museum</p>');
  await edit('navfinal.htm', '>Contents<', '><img src="gr-bullet-bk.gif" alt="All stops"><');
  await addLine('navfinal.htm', '</main>', '<p id="banner">Museum</p>');
  await cp(join(folder, 'grbullet.gif'), join(folder, 'fr-logo.gif'));
}

/** Templates that an author has changed still make a tour that plays. */
export function edited(context) {
  describe('templates that an author has edited', () => {
    let templates;
    let tour;
    before(async () => {
      templates = await scratchFolder();
      await copyTemplates(templates.folder);
      await editTemplates(templates.folder);
      tour = await publishTour({ stops: numberedStops(3), templates: templates.folder });
    });
    after(async () => {
      await tour.remove();
      await templates.remove();
    });

    it('make a tour that plays and shows the edits', () => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      for (const stop of tour.stops) {
        const { narration } = await visitor.arriveAt(stop, () => visitor.press('next'));
        const instruction = stop.number < 3 ? standardInstructions.next : standardInstructions.exit;
        for (const words of ['Our museum', stop.narration, instruction.replace(/<[^>]*>/g, '')])
          assert.ok(narration.includes(words), `stop ${stop.number} should say "${words}"`);
      }
      await visitor.chooseInContents(tour.stops[1]);
      const paper = await (await visitor.frame('nar')).$eval('html', (html) => getComputedStyle(html).backgroundColor);
      assert.equal(paper, 'rgb(255, 243, 214)');
      const logo = await (await visitor.frame('logo')).$eval('img', (image) => image.naturalWidth);
      assert.equal(logo, 24);
    }));
  });
}
