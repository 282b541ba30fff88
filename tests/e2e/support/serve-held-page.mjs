// Serves a folder on the loopback address and writes the address into a file. The line "hold" on standard input makes
// one of its pages wait until the line "release"; the file "requested" in the folder says that somebody waits for it.
// Arguments: the folder, the page, the file for the address.
import { rename, rm, writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { serveFolder } from '../../player/support/server.mjs';

const [folder, page, file] = process.argv.slice(2);
const requested = join(folder, 'requested');
const { origin, requests, hold, release } = await serveFolder(folder);
await writeFile(`${file}.part`, origin);
await rename(`${file}.part`, file);

let isHeld = false;
const commands = {
  hold() {
    const since = requests.length;
    isHeld = true;
    hold(`/${page}`);
    requests
      .waitFor(({ path }) => path === `/${page}`, page, { since, timeout: 600000 })
      .then(() => writeFile(requested, ''), () => {});
  },
  async release() {
    if (!isHeld)
      return;
    isHeld = false;
    release(`/${page}`);
    await rm(requested, { force: true });
  },
};

for await (const line of createInterface({ input: process.stdin }))
  await commands[line]();
process.exit();
