import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { after, before, describe, it } from 'node:test';
import { serveFolder } from '../support/server.mjs';
import { editFile, numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

const stepByItself = `<script>
setInterval(() => document.querySelector('[data-go="next"]').click(), 500);
</script>
</head>`;

/** Opens an address in a Chromium that nobody drives. Returns what ends it. */
async function openChromium(address) {
  const profile = await scratchFolder();
  const root = process.getuid?.() === 0 ? ['--no-sandbox'] : [];
  const program = spawn(process.env.CHROMIUM ?? '/usr/bin/chromium',
    ['--headless=new', '--no-first-run', `--user-data-dir=${profile.folder}`, ...root, address],
    { stdio: 'ignore', detached: true });
  return async () => {
    const ended = once(program, 'exit');
    process.kill(-program.pid, 'SIGKILL');
    await ended;
    await profile.remove().catch(() => {}); // Its last processes may still write.
  };
}

/** What a browser does whose frames are not watched: each change of a process counts. */
export function alone() {
  describe('a browser that nobody drives', () => {
    const count = 6;
    let elsewhere;
    let remote;
    let tour;
    before(async () => {
      elsewhere = await scratchFolder();
      for (let n = 1; n <= count; n += 1)
        await writePage(elsewhere.folder, `far${n}.htm`, sitePage(`Far ${n}`, `<img src="/shown${n}.gif" alt="">`));
      remote = await serveFolder(elsewhere.folder);
      const stops = numberedStops(count).map((stop, index) => (
        { ...stop, address: `${remote.origin}far${index + 1}.htm` }));
      tour = await publishTour({ stops });
      await editFile(join(tour.folder, 'nav3.htm'), '</head>', stepByItself);
    });
    after(async () => {
      await remote.close();
      await elsewhere.remove();
      await tour.remove();
    });

    it('gets from disk from server to server by the waiting page', async () => {
      const close = await openChromium(pathToFileURL(join(tour.folder, 'playtour.htm')).href);
      try {
        await remote.requests.waitFor(({ path }) => path === `/shown${count}.gif`, 'the page of the last stop', { timeout: 60000 });
      } finally {
        await close();
      }
      const asked = remote.requests.entries.map(({ path }) => path).filter((path) => path.startsWith('/far'));
      assert.ok(asked.length > 1);
      assert.deepEqual([...new Set(asked)].sort(), asked);
    });
  });
}
