import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { numberedStops, publishTour } from '../support/tour.mjs';

/** What is read of a page, on paper or without scripts. */
const shownText = () => document.body.innerText;

const shownButtons = () => [...document.querySelectorAll('button, .button')]
  .filter((button) => button.checkVisibility()).map((button) => button.textContent);

/** A tour on paper, and where a browser can do less than usual. */
export function paper(context) {
  describe('a tour on paper and without scripts', () => {
    let tour;
    before(async () => { tour = await publishTour({ stops: numberedStops(3) }); });
    after(() => tour.remove());
    const visit = (test) => context.visit(tour.folder, test);

    it('prints the frame of the words by a button', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const narration = await visitor.waitIn('nar', () => document.querySelector('[data-tour-print]').checkVisibility());
      await narration.evaluate(() => { window.print = () => { window.printed = document.title; }; });
      await visitor.click('nar', '[data-tour-print]');
      assert.match(await narration.evaluate(() => window.printed), /Title 1/);
    }));

    it('offers no printing to the author, whose window has no printer for it', () => context.visit(tour.workingCopy, async (visitor) => {
      await visitor.openTour('framever.htm');
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const narration = await visitor.waitIn('nar', () => document.querySelector('#address a'));
      assert.deepEqual(await narration.evaluate(shownButtons), []);
    }));

    // What drives Firefox can neither tell it to lay pages out for paper nor to run no scripts.
    if (context.browserName !== 'chromium')
      return;

    it('puts words and address on the paper, and no buttons', () => visit(async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const narration = await visitor.waitIn('nar', () => document.querySelector('[data-tour-print]').checkVisibility());
      await visitor.page.emulateMediaType('print');
      const text = await narration.evaluate(shownText);
      for (const wanted of ['Title 1', 'Words about place 1.', 'site1.htm'])
        assert.ok(text.includes(wanted), `${wanted} in ${text}`);
      assert.deepEqual(await narration.evaluate(shownButtons), []);
      await visitor.page.emulateMediaType();
    }));

    it('leads to the words of every stop without scripts, and never into a tour inside the tour', () => visit(async (visitor) => {
      await visitor.page.setJavaScriptEnabled(false);
      const loadedIn = async (name, file, action) => {
        await action();
        for (;;) {
          const frame = visitor.page.frames().find((other) => other.name() === name);
          if (frame?.url() === visitor.url(file))
            return frame;
          await new Promise((resolve) => { visitor.page.once('framenavigated', resolve); });
        }
      };
      await visitor.page.goto(visitor.url('playtour.htm'));
      for (const stop of tour.stops) {
        await loadedIn('mw', 'toc.htm', async () => (await visitor.frame('nav')).click('a[href="toc.htm"]'));
        const words = await loadedIn('mw', `page${stop.number}.htm`,
          async () => (await visitor.frame('mw')).click(`a[href="page${stop.number}.htm"]`));
        assert.match(await words.evaluate(shownText), new RegExp(`Words about place ${stop.number}\\.`));
      }
      await visitor.page.goto(visitor.url('playtour.htm'));
      const opening = await visitor.frame('mw');
      assert.equal(await opening.$eval('a[href="playtour.htm"]', (start) => start.target), '_top');
      await visitor.page.setJavaScriptEnabled(true);
    }));

    it('shows what cannot be used, and how far one is, in colours that the visitor has forced', () => visit(async (visitor) => {
      const driver = await visitor.page.createCDPSession();
      await driver.send('Emulation.setEmulatedMedia', { features: [{ name: 'forced-colors', value: 'active' }] });
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      const navigator = await visitor.frame('nav');
      const { disabled, enabled, progress, canvas } = await navigator.evaluate(() => {
        const color = (selector, name) => getComputedStyle(document.querySelector(selector))[name];
        document.querySelector('[data-go="previous"]').setAttribute('aria-disabled', 'true');
        return {
          disabled: color('[data-go="previous"]', 'color'),
          enabled: color('[data-go="next"]', 'color'),
          progress: color('#progress', 'color'),
          canvas: color('#progress', 'backgroundColor'),
        };
      });
      assert.notEqual(disabled, enabled);
      assert.notEqual(progress, canvas);
    }));
  });
}
