import { pathToFileURL } from 'node:url';
import { serveFolder } from './server.mjs';

/** The ways of playing a tour. Each opens a folder and returns {base, close}; `base` ends with a slash. */
export const ways = {
  'from a web server': async (folder) => {
    const server = await serveFolder(folder);
    return { base: server.origin, close: server.close };
  },
  'from a web server with https': async (folder) => {
    const server = await serveFolder(folder, { secure: true });
    return { base: server.origin, close: server.close };
  },
  'from disk': async (folder) => ({ base: `${pathToFileURL(folder).href}/`, close: async () => {} }),
};
