/**
 * What a tour costs its visitors, in Chromium and Firefox, beside what it may cost (budget.json): a table, no verdict.
 * Pages come from a server on this machine that lets browsers keep them, as web servers do. Bytes are those of the files,
 * without the author's own; a step is from the click on Next until the words of the next stop can be seen.
 */
import { readFile, stat } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from '../../tests/player/support/browsers.mjs';
import { Visitor } from '../../tests/player/support/player.mjs';
import { serveFolder } from '../../tests/player/support/server.mjs';
import { numberedStops, publishTour } from '../../tests/player/support/tour.mjs';

const stopCount = Number(process.argv[2] ?? 100);
const budget = JSON.parse(await readFile(new URL('budget.json', import.meta.url)));
const isAuthors = (path) => /^\/site\d+\.htm$/.test(path);

const median = (numbers) => [...numbers].sort((left, right) => left - right)[Math.floor(numbers.length / 2)];

/** Runs in the tour: milliseconds from a click on Next until the words of this stop are visible. */
function timeStep(stop) {
  return new Promise((resolve) => {
    const channel = new MessageChannel();
    const began = performance.now();
    channel.port1.onmessage = () => {
      const { location, documentElement, readyState } = window.frames.nar.document;
      const isThere = location.pathname.endsWith(`/page${stop}.htm`) && readyState !== 'loading';
      if (isThere && documentElement.style.visibility === '')
        resolve(performance.now() - began);
      else
        channel.port2.postMessage('');
    };
    window.frames.nav.document.querySelector('[data-go="next"]').click();
    channel.port2.postMessage('');
  });
}

async function bytesOf(folder, paths) {
  const sizes = await Promise.all([...new Set(paths)].map(async (path) => (await stat(join(folder, path))).size));
  return sizes.reduce((sum, size) => sum + size, 0);
}

async function measure(browserName, tour) {
  const server = await serveFolder(tour.folder, { headers: { 'cache-control': 'max-age=3600' } });
  const browser = await launchBrowser(browserName);
  const visitor = await Visitor.arrive(browser, server.origin);
  const paths = [];
  const asked = (since) => server.requests.since(since).map(({ path }) => path).filter((path) => !isAuthors(path));
  await visitor.openTour();
  await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
  paths.push(...asked(0));
  const times = [];
  const requests = [];
  for (const stop of tour.stops.slice(1)) {
    const since = server.requests.length;
    await visitor.arriveAt(stop, async () => times.push(await visitor.page.evaluate(timeStep, stop.number)));
    requests.push(asked(since).length);
  }
  const toOthers = visitor.requests.filter((url) => !url.startsWith(server.origin) && !/^(about|data):/.test(url));
  await browser.close();
  await server.close();
  return {
    bytesOfFirstStop: await bytesOf(tour.folder, paths),
    requestsOfFirstStop: paths.length,
    requestsToOthers: toOthers.length,
    requestsOfAStep: median(requests),
    millisecondsOfAStep: Math.round(median(times)),
  };
}

const tour = await publishTour({ stops: numberedStops(stopCount) });
const table = {};
for (const name of ['chromium', 'firefox']) {
  for (const [what, value] of Object.entries(await measure(name, tour)))
    table[what] = { ...table[what], [name]: value, budget: budget[what] ?? '' };
}
console.table(table);
await tour.remove();
