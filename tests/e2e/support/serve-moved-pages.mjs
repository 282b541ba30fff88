// Serves on the loopback address, and writes the address into a file: /old-N has moved to /new-N for good, and /silent is
// never answered. Argument: the file for the address; beside it, the file "....asked" gets a line for each request, what it
// is for and its path.
import { appendFileSync } from 'node:fs';
import { rename, writeFile } from 'node:fs/promises';
import { createServer } from 'node:http';

const [file] = process.argv.slice(2);
const server = createServer((request, response) => {
  appendFileSync(`${file}.asked`, `${request.headers['sec-fetch-dest']} ${request.url}\n`);
  if (request.url.startsWith('/silent'))
    return;
  if (request.url.startsWith('/old-'))
    response.writeHead(301, { Location: request.url.replace('/old-', '/new-') }).end();
  else
    response.writeHead(200, { 'Content-Type': 'text/html' }).end('<!DOCTYPE html><title>New</title><p>Here it is.');
});
server.listen(0, '127.0.0.1', async () => {
  await writeFile(`${file}.part`, `http://127.0.0.1:${server.address().port}`);
  await rename(`${file}.part`, file);
});
