import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

const phone = { width: 390, height: 844 };
const smallPhone = { width: 320, height: 568 };
const lyingPhone = { width: 844, height: 390 };
const laptop = { width: 1280, height: 800 };
const widest = { width: 2560, height: 1440 };

const widePicture = '<img alt="" src="data:image/svg+xml,'
  + '<svg xmlns=%22http://www.w3.org/2000/svg%22 width=%223000%22 height=%2220%22/>">';

const sentence = 'The saguaro grows slowly under a hot sun and keeps water for dry years. ';
const wordsOfAnOrdinaryStop = sentence.repeat(6).trim(); // 84 words

/** How much of a page its frame shows: {width, height, neededWidth, neededHeight}. */
const room = () => ({
  width: document.documentElement.clientWidth,
  height: document.documentElement.clientHeight,
  neededWidth: document.documentElement.scrollWidth,
  neededHeight: document.documentElement.scrollHeight,
});

/** What can be pressed and is not wholly inside the window of its frame, or smaller than this. */
const misplaced = (least) => [...document.querySelectorAll('a, button')]
  .filter((control) => control.checkVisibility())
  .map((control) => ({ name: control.textContent.trim(), box: control.getBoundingClientRect() }))
  .filter(({ box }) => box.top < 0 || box.left < 0 || box.right > innerWidth || box.bottom > innerHeight
    || box.width < least || box.height < least)
  .map(({ name, box }) => `${name} ${JSON.stringify(box)}`);

const tooSmall = (least) => [...document.querySelectorAll('a, button')]
  .filter((control) => control.checkVisibility() && !control.closest('#address'))
  .concat(least < 44 ? [] : [...document.querySelectorAll('#address a')])
  .filter((control) => control.getBoundingClientRect().height < least)
  .map((control) => control.textContent);

/** The frames of a tour are as large as what is in them needs. */
export function layout(context) {
  describe('the sizes of the frames', () => {
    let tour;
    before(async () => {
      const stops = numberedStops(100).map((stop) => ({ ...stop, narration: wordsOfAnOrdinaryStop }));
      stops[1].narration = `<table width="3000"><tr><td>one</td><td>two</td></tr></table>${widePicture}`;
      stops[2].narration = wordsOfAnOrdinaryStop.repeat(20);
      stops[3].narration = 'Few words.';
      tour = await publishTour({ title: 'Sizes', stops });
    });
    after(() => tour.remove());

    const visit = (window, test) => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await test(visitor);
    }, window);
    const roomIn = async (visitor, name) => (await visitor.frame(name)).evaluate(room);
    const goTo = (visitor, number) => visitor.arriveAt(tour.stops[number - 1],
      () => visitor.page.evaluate((n) => { location.hash = `stop-${n}`; }, number));

    /** The frames have got the sizes that their pages have asked for. */
    async function settled(visitor, { most = 0.4 } = {}) {
      const height = await visitor.page.evaluate(() => innerHeight);
      await visitor.waitIn('nar', (highest) => {
        const { clientHeight } = document.documentElement;
        const needed = document.body.getBoundingClientRect().height;
        return clientHeight >= Math.floor(needed) || clientHeight >= highest;
      }, Math.floor(height * most) - 1);
      await visitor.waitIn('nav', () => document.documentElement.scrollHeight <= innerHeight
        && document.documentElement.scrollWidth <= innerWidth);
    }

    it('let the words of ordinary stops be read without scrolling at 1280 by 800', () => visit(laptop, async (visitor) => {
      const tooLong = [];
      await goTo(visitor, 4);
      for (const stop of tour.stops.slice(4, 14)) {
        await visitor.arriveAt(stop, () => visitor.press('next'));
        await settled(visitor);
        const { height, neededHeight } = await roomIn(visitor, 'nar');
        if (neededHeight > height)
          tooLong.push(`${stop.number}: ${neededHeight} > ${height}`);
      }
      assert.deepEqual(tooLong, []);
    }));

    it('leave the page of the stop its part of the window, however many the words', () => visit(laptop, async (visitor) => {
      await goTo(visitor, 3);
      await settled(visitor);
      assert.equal((await roomIn(visitor, 'nar')).height, 320);
      await goTo(visitor, 4);
      await visitor.waitIn('nar', () => innerHeight < 320);
    }));

    it('load no frame again when they change', () => visit(laptop, async (visitor) => {
      await goTo(visitor, 4);
      await settled(visitor);
      for (const name of ['mw', 'nar', 'nav', 'logo'])
        await (await visitor.frame(name)).evaluate(() => { window.isTheSame = true; });
      for (const window of [lyingPhone, smallPhone, widest]) {
        await visitor.page.setViewport(window);
        await visitor.waitIn('nav', (bar) => document.documentElement.classList.contains('bar') === bar, window !== widest);
        await settled(visitor);
      }
      for (const name of ['mw', 'nar', 'nav', 'logo'])
        assert.equal(await (await visitor.frame(name)).evaluate(() => window.isTheSame), true, name);
    }));

    it('keep tables and pictures inside', () => visit(laptop, async (visitor) => {
      await goTo(visitor, 2);
      await settled(visitor);
      const { width, neededWidth } = await roomIn(visitor, 'nar');
      assert.equal(neededWidth, width);
    }));

    for (const window of [smallPhone, phone, lyingPhone, laptop, widest]) {
      const name = `${window.width} by ${window.height}`;
      it(`hold all buttons at ${name}, the way out of the tour among them`, () => visit(window, async (visitor) => {
        const least = window.width <= 844 ? 44 : 24;
        for (const number of [1, 100]) {
          await goTo(visitor, number);
          await settled(visitor);
          const navigator = await visitor.waitIn('nav', () => !document.getElementById('open-page').hidden);
          assert.deepEqual(await navigator.evaluate(misplaced, least), []);
          const { text, href, lines } = await navigator.evaluate(() => ({
            text: document.getElementById('open-page').textContent,
            href: document.getElementById('open-page').href,
            lines: document.getElementById('position').getClientRects().length,
          }));
          assert.equal(text, 'Open this page');
          assert.equal(href, visitor.url(`site${number}.htm`));
          assert.equal(lines, 1);
          const small = await (await visitor.frame('nar')).evaluate(tooSmall, window.width <= 600 ? 44 : 24);
          assert.deepEqual(small, []);
        }
      }));
    }

    for (const window of [smallPhone, lyingPhone, laptop]) {
      it(`clip nothing with letters of twice the size at ${window.width} pixels`, () => visit(window, async (visitor) => {
        await goTo(visitor, 1);
        for (const name of ['nar', 'nav']) {
          await (await visitor.frame(name)).evaluate(() => {
            const sheet = document.head.appendChild(document.createElement('style'));
            sheet.textContent = 'html { font-size: 200% !important; }';
          });
        }
        await settled(visitor);
        const navigator = await visitor.frame('nav');
        assert.deepEqual(await navigator.evaluate(misplaced, 0), []);
        const { width, neededWidth } = await roomIn(visitor, 'nar');
        assert.equal(neededWidth, width);
      }));
    }
  });

  for (const { language, isMirrored } of [{ language: 'en', isMirrored: false }, { language: 'he', isMirrored: true }]) {
    describe(`words beside the page, in a tour in the language ${language}`, () => {
      let tour;
      before(async () => {
        const stops = numberedStops(3).map((stop) => ({ ...stop, narration: wordsOfAnOrdinaryStop }));
        tour = await publishTour({ commands: ['#Layout = side', `#Language = ${language}`], stops });
      });
      after(() => tour.remove());

      const boxes = (visitor) => visitor.page.evaluate(() => Object.fromEntries(
        [...document.querySelectorAll('frame')].map((frame) => {
          const { left, right, top, bottom } = frame.getBoundingClientRect();
          // From where reading begins.
          const isFromRight = document.documentElement.dir === 'rtl';
          return [frame.name, { begin: isFromRight ? innerWidth - right : left, end: isFromRight ? innerWidth - left : right, top, bottom }];
        }),
      ));
      /** The buttons move when the navigator hears where it is. */
      const beginBeside = async (visitor) => {
        await visitor.open('playtour.htm');
        await visitor.waitIn('nav', () => document.documentElement.classList.contains('bar')
          && document.getElementById('position').textContent !== '' && document.documentElement.scrollHeight <= innerHeight);
        await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      };
      const isBeside = (visitor, wanted) => visitor.page.waitForFunction(
        (beside) => document.documentElement.classList.contains('beside') === beside, { polling: 50 }, wanted);

      it('come and go with the width of the window, and load no frame again', () => context.visit(tour.folder, async (visitor) => {
        await beginBeside(visitor);
        await isBeside(visitor, true);
        const names = ['mw', 'nar', 'nav', 'logo'];
        for (const name of names)
          await (await visitor.frame(name)).evaluate(() => { window.isTheSame = true; });
        const { mw, logo, nar, nav } = await boxes(visitor);
        assert.equal(mw.begin, 0);
        assert.ok(mw.end <= nar.begin && nar.end >= laptop.width - 2);
        assert.ok(mw.top === 0 && mw.bottom >= laptop.height - 2);
        assert.ok(logo.bottom <= nar.top && nar.bottom <= nav.top && nav.bottom >= laptop.height - 2);
        for (const { width, wanted } of [{ width: 1199, wanted: false }, { width: 1200, wanted: true }, { width: 390, wanted: false }]) {
          await visitor.page.setViewport({ ...laptop, width });
          await isBeside(visitor, wanted);
        }
        const below = await boxes(visitor);
        assert.ok(below.mw.bottom <= below.nar.top);
        for (const name of names)
          assert.equal(await (await visitor.frame(name)).evaluate(() => window.isTheSame), true, name);
        await visitor.page.setViewport(laptop);
        await isBeside(visitor, true);
        await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      }, laptop));

      it('have all buttons in sight and need no scrolling', () => context.visit(tour.folder, async (visitor) => {
        await beginBeside(visitor);
        const navigator = await visitor.waitIn('nav', () => document.documentElement.classList.contains('bar')
          && document.documentElement.scrollHeight <= innerHeight);
        assert.deepEqual(await navigator.evaluate(misplaced, 44), []);
        const words = await (await visitor.frame('nar')).evaluate(room);
        assert.ok(words.neededHeight <= words.height && words.neededWidth <= words.width, JSON.stringify(words));
        assert.equal(await (await visitor.frame('nar')).evaluate(() => document.documentElement.dir), isMirrored ? 'rtl' : '');
      }, laptop));
    });
  }
}
