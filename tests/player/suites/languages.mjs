import assert from 'node:assert/strict';
import { readFile, readdir } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, it } from 'node:test';
import { runInNewContext } from 'node:vm';
import { numberedStops, publishTour, templateFolder } from '../support/tour.mjs';

const languages = ['ar', 'de', 'en', 'es', 'fr', 'he', 'it', 'ja', 'nl', 'pl', 'pt'];

/** What a script of words says: {tourWords, written}, `written` being what it has added to its page. */
function runWords(text) {
  const written = [];
  const scope = { document: { write: (html) => written.push(html) } };
  runInNewContext(`${text}; this.tourWords = tourWords;`, scope);
  return { tourWords: scope.tourWords, written };
}

const readText = (folder, name) => readFile(join(folder, name), 'latin1');

const english = 'the|this|that|a|of|and|page|stop|stops|next|prev|previous|exit|open|contents|start|words|guide|print|keys|copy|'
  + 'visited|narration|navigator|click|button|look|last|first|local|file|go|on|browser|leave|progress|title|words|arrow';

/** Runs in a page: all that visitors read or hear there, but for what the tour's author has written. */
function readAll() {
  const texts = document.createTreeWalker(document.documentElement, NodeFilter.SHOW_TEXT);
  const found = [];
  while (texts.nextNode()) {
    if (!texts.currentNode.parentElement.closest('script, style, noframes, #address, .unread'))
      found.push(texts.currentNode.data);
  }
  for (const element of document.querySelectorAll('[title], [aria-label], [alt], [placeholder]'))
    found.push(...['title', 'aria-label', 'alt', 'placeholder'].map((name) => element.getAttribute(name) ?? ''));
  const { lang, dir } = document.documentElement;
  return { page: location.pathname.split('/').pop(), lang, dir, found: found.map((text) => text.trim()).filter(Boolean) };
}

const tours = [
  {
    language: 'de',
    dir: '',
    title: 'Kakteen',
    stops: ['Kaktus', 'Wurzel', 'Dorn'],
    words: 'Wasser und Sonne.',
    isForeign: (text) => new RegExp(`\\b(${english})\\b`, 'i').test(text.replace('Use this Site', '')),
  },
  {
    language: 'he',
    dir: 'rtl',
    title: '&#1511;&#1511;&#1496;&#1493;&#1505;',
    stops: ['&#1511;&#1493;&#1509;', '&#1513;&#1493;&#1512;&#1513;', '&#1508;&#1512;&#1495;'],
    words: '&#1502;&#1497;&#1501;',
    // Keys that have no other name, files, and what stands on the buttons of the program.
    isForeign: (text) => /[a-z]/i.test(text.replace(/\b(Home|End|Esc|Tab|HTML|https?|Use this Site|\w+\.htm)\b/g, '')),
  },
];

/** A tour speaks the language that its author has chosen. */
export function languagesOfTours(context) {
  describe('the words of the templates', () => {
    it('are there in every language, with the same parts to fill', async () => {
      const { tourWords } = runWords(await readText(templateFolder, 'tourwords.js'));
      assert.deepEqual(Object.keys(tourWords).sort(), languages);
      const parts = (text) => (text.match(/\{\w+\}|<\w+[^>]*>/g) ?? []).sort();
      for (const language of languages) {
        assert.deepEqual(Object.keys(tourWords[language]), Object.keys(tourWords.en), language);
        for (const [word, text] of Object.entries(tourWords[language])) {
          assert.notEqual(text.trim(), '', `${language} ${word}`);
          const filled = (all) => parts(all).filter((part) => part.startsWith('{') || part.startsWith('<span'));
          assert.deepEqual(filled(text), filled(tourWords.en[word]), `${language} ${word}`);
        }
      }
    });

    it('are those that the pages hold', async () => {
      const { tourWords: { en } } = runWords(await readText(templateFolder, 'tourwords.js'));
      const page = await context.browser.newPage();
      let count = 0;
      for (const name of (await readdir(templateFolder)).filter((file) => file.endsWith('.htm'))) {
        const held = await page.evaluate((text) => {
          const parsed = new DOMParser().parseFromString(text, 'text/html');
          const plain = (html) => html.replace(/\s+/g, ' ').trim();
          const attributes = { wordTitle: 'title', wordLabel: 'aria-label', wordAlt: 'alt' };
          return [...parsed.querySelectorAll('*')].flatMap((element) => Object.entries(element.dataset).map(([key, word]) => {
            if (key === 'word')
              return [word, plain(element.innerHTML)];
            return key in attributes ? [word, element.getAttribute(attributes[key])] : null;
          })).filter(Boolean);
        }, await readText(templateFolder, name));
        for (const [word, text] of held) {
          count += 1;
          if (word !== 'goOn')
            assert.equal(text, en[word], `${word} in ${name}`);
        }
      }
      assert.ok(count > 60, `only ${count} words were looked at`);
      await page.close();
    });
  });

  describe('a tour without a language', () => {
    let tour;
    before(async () => { tour = await publishTour({ stops: numberedStops(2) }); });
    after(() => tour.remove());

    it('carries English words and no file of choices', async () => {
      const { tourWords, written } = runWords(await readText(tour.folder, 'tourwords.js'));
      assert.deepEqual(Object.keys(tourWords), ['en']);
      assert.deepEqual(written, []);
      assert.ok(!(await readdir(tour.folder)).includes('tourchoices.js'));
    });
  });

  for (const { language, dir, title, stops, words, isForeign } of tours) {
    describe(`a tour in the language ${language}`, () => {
      let tour;
      const isMirrored = dir === 'rtl';
      before(async () => {
        tour = await publishTour({
          title,
          commands: [`#Language = ${language}`],
          stops: stops.map((stopTitle, index) => ({ title: stopTitle, address: `site${index + 1}.htm`, narration: words })),
        });
      });
      after(() => tour.remove());
      const visit = (test) => context.visit(tour.folder, test);
      const openPlayed = async (visitor) => {
        await visitor.open('playtour.htm');
        await visitor.waitIn('nav', () => document.getElementById('position').textContent !== '');
      };

      it('carries the words of that language only, and the preview all of them', async () => {
        const published = runWords(await readText(tour.folder, 'tourwords.js'));
        assert.deepEqual(Object.keys(published.tourWords), [language]);
        assert.deepEqual(published.written, ['<script src="tourchoices.js"></script>']);
        const preview = runWords(await readText(tour.workingCopy, 'tourwords.js'));
        assert.deepEqual(Object.keys(preview.tourWords).sort(), languages);
        assert.deepEqual(preview.written, published.written);
        assert.match(await readText(tour.folder, 'tourchoices.js'), new RegExp(`^tourChoices\\.language = '${language}';\r$`, 'm'));
      });

      it('keeps what is stored of it', async () => {
        assert.match(await readText(tour.folder, 'page1.htm'), /^Click the <strong>Next button<\/strong> to go to the next stop\.\r$/m);
        assert.match(await readText(tour.folder, 'toc.htm'), /^<a href="page1.htm">Stop 1&#151;/m);
      });

      async function assertNothingForeign(frame) {
        const { page, lang, dir: direction, found } = await frame.evaluate(readAll);
        assert.equal(lang, language, page);
        assert.equal(direction, dir, page);
        assert.ok(found.length > 0, page);
        assert.deepEqual(found.filter(isForeign), [], page);
      }

      async function assertNothingForeignInFrames(visitor, names = ['mw', 'nar', 'nav', 'logo', 'ahead']) {
        for (const name of names)
          await assertNothingForeign(await visitor.frame(name));
        await assertNothingForeign(visitor.page.mainFrame());
      }

      it('shows and says nothing in English', () => visit(async (visitor) => {
        await openPlayed(visitor);
        await assertNothingForeignInFrames(visitor);
        const ownFrames = ['nar', 'nav', 'logo', 'ahead'];
        for (const stop of tour.stops) {
          await visitor.arriveAt(stop, () => visitor.press('next'));
          await assertNothingForeignInFrames(visitor, ownFrames);
        }
        await visitor.click('nar', '[data-tour-copy]');
        await visitor.openContents();
        await visitor.waitIn('mw', () => document.querySelector('a.visited'));
        await assertNothingForeignInFrames(visitor);
        await visitor.load('mw', 'tourkeys.htm', () => visitor.key('?'));
        await assertNothingForeignInFrames(visitor);
      }));

      it('has no English on the pages that stand alone', () => visit(async (visitor) => {
        for (const name of ['index.htm', 'openhelp.htm', 'toc.htm', 'tguide.htm', 'newpage.htm', 'tourwait.htm', 'tourkeys.htm']) {
          await visitor.open(name);
          await assertNothingForeign(visitor.page.mainFrame());
        }
      }));

      it('says in it why a page does not come', () => visit(async (visitor) => {
        await openPlayed(visitor);
        const site = await visitor.frame('mw');
        for (const address of context.way === 'from disk' ? [''] : ['', 'file:///nowhere.htm']) {
          await site.evaluate((query) => { location.href = `tourwait.htm?${query}`; }, encodeURIComponent(address));
          const waiting = await visitor.waitIn('mw', () => document.body?.classList.contains('waiting'));
          await assertNothingForeign(waiting);
        }
      }));

      it('is played by the arrow key that points onwards', () => visit(async (visitor) => {
        await openPlayed(visitor);
        const [onwards, back] = isMirrored ? ['ArrowLeft', 'ArrowRight'] : ['ArrowRight', 'ArrowLeft'];
        await visitor.arriveAt(tour.stops[0], () => visitor.key(onwards));
        await visitor.arriveAt(tour.stops[1], () => visitor.key(onwards));
        await visitor.arriveAt(tour.stops[0], () => visitor.key(back));
        const keys = await (await visitor.frame('nav')).$eval('[data-go="next"]', (next) => next.getAttribute('aria-keyshortcuts'));
        assert.equal(keys, onwards);
      }));

      it('has its frames and buttons on the sides where they are looked for', () => visit(async (visitor) => {
        await openPlayed(visitor);
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        const boxes = await visitor.page.evaluate(() => Object.fromEntries([...document.querySelectorAll('frame')].map((frame) => {
          const { left, right } = frame.getBoundingClientRect();
          return [frame.name, { left: Math.round(left), right: Math.round(right) }];
        })));
        const inOrder = isMirrored ? ['nav', 'nar', 'logo'] : ['logo', 'nar', 'nav'];
        assert.equal(boxes[inOrder[0]].left, 0);
        assert.ok(boxes[inOrder[0]].right <= boxes[inOrder[1]].left);
        assert.ok(boxes[inOrder[1]].right <= boxes[inOrder[2]].left);
        assert.equal(boxes[inOrder[2]].right, await visitor.page.evaluate(() => innerWidth));
        const navigator = await visitor.frame('nav');
        const [previous, next] = await navigator.$$eval('[data-go="previous"], [data-go="next"]',
          (buttons) => buttons.map((button) => button.getBoundingClientRect().left));
        assert.equal(next < previous, isMirrored);
      }));

      it('lets titles and words keep their own direction', () => visit(async (visitor) => {
        await openPlayed(visitor);
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
        const directions = await (await visitor.frame('nar')).evaluate(() => ['h5', '.words'].map((part) => {
          const element = document.querySelector(part);
          return [element.dir, getComputedStyle(element).direction];
        }));
        assert.deepEqual(directions, [['auto', isMirrored ? 'rtl' : 'ltr'], ['auto', isMirrored ? 'rtl' : 'ltr']]);
      }));
    });
  }
}
