import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { findViolations } from '../player/support/axe.mjs';
import { launchBrowser } from '../player/support/browsers.mjs';
import { helpFolder, pages } from './support/pages.mjs';

const widths = [320, 1024];

async function openPage(browser, name, width) {
  const page = await browser.newPage();
  const requests = [];
  const complaints = [];
  page.on('request', (request) => requests.push(request.url()));
  page.on('requestfailed', (request) => complaints.push(request.url()));
  page.on('console', (message) => complaints.push(message.text()));
  await page.setViewport({ width, height: 640 });
  await page.goto(pathToFileURL(join(helpFolder, name)).href);
  return { page, requests, complaints };
}

/** The page's background, as a number from 0 (black) to 255. */
function brightness(page) {
  return page.evaluate(() => {
    const [red, green, blue] = getComputedStyle(document.documentElement).backgroundColor.match(/\d+/g).map(Number);
    return (red + green + blue) / 3;
  });
}

for (const dark of [false, true]) {
  describe(`in Chromium, ${dark ? 'dark' : 'light'}`, () => {
    let browser;
    before(async () => { browser = await launchBrowser('chromium', { dark }); });
    after(() => browser.close());

    for (const name of pages.keys()) {
      for (const width of widths) {
        test(`axe finds nothing on ${name} at ${width} pixels`, async () => {
          const { page } = await openPage(browser, name, width);
          assert.deepEqual(await findViolations(page), []);
          await page.close();
        });

        test(`${name} fits into ${width} pixels without scrolling sideways`, async () => {
          const { page } = await openPage(browser, name, width);
          assert.ok(await page.evaluate(() => document.documentElement.scrollWidth) <= width);
          await page.close();
        });
      }

      test(`${name} asks for nothing outside the Help folder and complains of nothing`, async () => {
        const { page, requests, complaints } = await openPage(browser, name, 1024);
        const folder = pathToFileURL(helpFolder).href;
        assert.ok(requests.length > 1, 'the page and its style sheet should be asked for');
        assert.deepEqual(requests.filter((url) => !url.startsWith(folder) && url !== 'data:,'), []);
        assert.deepEqual(complaints, []);
        await page.close();
      });

      test(`${name} is ${dark ? 'dark' : 'light'}`, async () => {
        const { page } = await openPage(browser, name, 1024);
        assert.equal(await brightness(page) < 128, dark);
        await page.close();
      });
    }
  });
}
