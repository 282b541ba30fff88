// Serves a folder on the loopback address and writes the address into a file. Arguments: the folder, the file.
import { rename, writeFile } from 'node:fs/promises';
import { serveFolder } from '../../player/support/server.mjs';

const [folder, file] = process.argv.slice(2);
const { origin } = await serveFolder(folder);
await writeFile(`${file}.part`, origin);
await rename(`${file}.part`, file);
