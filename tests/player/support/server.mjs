import { createReadStream } from 'node:fs';
import { readFile, stat } from 'node:fs/promises';
import { createServer } from 'node:http';
import { createServer as createSecureServer } from 'node:https';
import { extname, join, normalize } from 'node:path';
import { EventLog } from './event-log.mjs';

const contentTypes = {
  '.htm': 'text/html',
  '.html': 'text/html',
  '.js': 'text/javascript',
  '.css': 'text/css',
  '.gif': 'image/gif',
  '.png': 'image/png',
  '.svg': 'image/svg+xml',
  '.txt': 'text/plain',
};

async function listen(server) {
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  return server.address().port;
}

async function close(server) {
  server.closeAllConnections();
  await new Promise((resolve) => server.close(resolve));
}

async function sendFile(path, response, headers = {}) {
  const found = await stat(path).catch(() => null);
  if (!found?.isFile()) {
    response.writeHead(404, { 'content-type': 'text/plain' }).end('Not found');
    return;
  }
  response.writeHead(200, { 'content-type': contentTypes[extname(path)] ?? 'application/octet-stream', ...headers });
  createReadStream(path).pipe(response);
}

/**
 * Serves a folder on the loopback address. `requests` logs every request as {path, at}, `at` in milliseconds. A path that is held gets no
 * answer until it is released. With `secure` it is a server for https, of a certificate that only these tests trust; `headers` go
 * with each file.
 */
export async function serveFolder(folder, { secure = false, headers } = {}) {
  const requests = new EventLog('request');
  const held = new Map();
  const answer = async (request, response) => {
    const path = decodeURIComponent(new URL(request.url, 'http://server').pathname);
    requests.add({ path, at: performance.now() });
    await held.get(path)?.opened;
    await sendFile(join(folder, normalize(path)), response, headers);
  };
  const pem = secure ? await readFile(new URL('loopback.pem', import.meta.url)) : null;
  const server = secure ? createSecureServer({ key: pem, cert: pem }, answer) : createServer(answer);
  const origin = `${secure ? 'https' : 'http'}://127.0.0.1:${await listen(server)}/`;
  return {
    origin,
    requests,
    hold(path) {
      const gate = {};
      gate.opened = new Promise((resolve) => { gate.open = resolve; });
      held.set(path, gate);
    },
    release(path) {
      held.get(path).open();
      held.delete(path);
    },
    close: () => close(server),
  };
}

const isRedirect = ({ status }) => status >= 300 && status < 400;

/**
 * Serves the answers of cases (see answers.mjs) on the loopback address, those of case n at n/0, n/1 and so on. Every
 * page asks for a picture, so `shown` logs the case of each page that a browser shows.
 */
export async function serveAnswers(cases) {
  const shown = new EventLog('in pages');
  const server = createServer((request, response) => {
    const [, number, step] = request.url.split('/');
    const answer = cases[number]?.answers[step];
    if (step === 'shown')
      shown.add(Number(number));
    if (!answer) {
      response.writeHead(404).end();
      return;
    }
    const headers = [...answer.headers, ['Content-Type', 'text/html']];
    if (isRedirect(answer))
      headers.push(['Location', `/${number}/${Number(step) + 1}`]);
    response.writeHead(answer.status, headers.flat());
    response.end(`<title>Case ${number}</title>${answer.body}<img src="/${number}/shown" alt="">`);
  });
  return { origin: `http://127.0.0.1:${await listen(server)}/`, shown, close: () => close(server) };
}

/**
 * The way out for every address that is not on the loopback: nothing gets through, and `requests` logs each host
 * that the browser tried to reach as {host}.
 */
export async function startDeadEnd() {
  const requests = new EventLog('request to the outside');
  const server = createServer((request, response) => {
    requests.add({ host: new URL(request.url).host });
    response.writeHead(502).end();
  });
  server.on('connect', (request, socket) => {
    requests.add({ host: request.url });
    socket.on('error', () => {});
    socket.end('HTTP/1.1 502 Bad Gateway\r\n\r\n');
  });
  const port = await listen(server);
  return { port, requests, close: () => close(server) };
}
