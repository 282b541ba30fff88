import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { cp, mkdir, mkdtemp, readFile, realpath, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';

const marker = '<<<VoskInfo>>>';
const assets = fileURLToPath(new URL('../../../assets/', import.meta.url));

export const templateFolder = join(assets, 'Template');
export const sampleFolder = join(assets, 'MyTours', 'Sample');

export const standardInstructions = {
  next: 'Click the <strong>Next button</strong> to go to the next stop.',
  exit: 'Click the <strong>Exit button</strong> to quit this Tour.',
};

/** A folder of its own, with its removal. */
export async function scratchFolder() {
  const folder = await realpath(await mkdtemp(join(tmpdir(), 'wendmark-player-')));
  return { folder, remove: () => rm(folder, { recursive: true }) };
}

/** A page for the site frame that says which one it is. */
export function sitePage(title, extra = '') {
  return `<!DOCTYPE html>
<html lang="en">
<head><meta charset="windows-1252"><title>${title}</title><link rel="icon" href="data:,"></head>
<body><main><h1>${title}</h1>${extra}</main></body>
</html>
`;
}

/** The script of a tour. Commands are written without their marker; stops are {title, address, narration}. */
export function scriptText({ title, commands = [], stops }) {
  const lines = [
    ...['#BufferDelay = 30', '#SingleWindow', ...commands].map((command) => marker + command),
    '',
    title,
    '',
  ];
  stops.forEach((stop, index) => {
    const instruction = index + 1 < stops.length ? standardInstructions.next : standardInstructions.exit;
    lines.push(`${marker} Stop${index + 1}`, stop.title, stop.address, '', stop.narration, '', instruction, '');
  });
  return lines.map((line) => `${line}\r\n`).join('');
}

/** Stops with local pages site1.htm, site2.htm and so on, and narrations that say which stop they belong to. */
export function numberedStops(count) {
  return Array.from({ length: count }, (_, index) => ({
    title: `Title ${index + 1}`,
    address: `site${index + 1}.htm`,
    narration: `Words about place ${index + 1}.`,
  }));
}

function localPages(stops) {
  const local = stops.filter((stop) => /^site\d+\.htm$/.test(stop.address));
  return Object.fromEntries(local.map((stop) => [stop.address, sitePage(stop.title)]));
}

async function runProgram(args) {
  const program = process.env.WENDMARK_TOUR;
  assert.ok(program, 'WENDMARK_TOUR must name the program wendmark-tour');
  await promisify(execFile)(program, args);
}

/** What the script of a tour says about its stops: {number, title, address, narration}. */
export function readStops(script) {
  return script.split(`${marker} Stop`).slice(1).map((block, index) => {
    const [, title, address, , ...rest] = block.split('\r\n');
    return { number: index + 1, title, address, narration: rest.slice(0, rest.indexOf('')).join('\r\n') };
  });
}

/**
 * Publishes the tour in a source folder. Returns {folder, workingCopy, stops, remove}; `folder` is what visitors
 * get, `workingCopy` what the author's preview shows.
 */
export async function publishFolder(source, { templates = templateFolder } = {}) {
  const { folder: root, remove } = await scratchFolder();
  const folder = join(root, 'tour');
  const workingCopy = join(root, 'working-copy');
  await runProgram(['publish', source, '--into', folder, '--template', templates, '--working-copy', workingCopy]);
  const script = await readFile(join(folder, 'script.txt'), 'latin1');
  return { folder, workingCopy, stops: readStops(script), remove };
}

/** Publishes a tour made for a test. `files` are further files of the tour, by name. */
export async function publishTour({ title = 'Test tour', commands, stops, files = {}, templates }) {
  const source = await scratchFolder();
  const contents = { ...localPages(stops), ...files, 'script.txt': scriptText({ title, commands, stops }) };
  for (const [name, text] of Object.entries(contents))
    await writeFile(join(source.folder, name), text, 'latin1');
  const tour = await publishFolder(source.folder, { templates });
  await source.remove();
  return tour;
}

/** Changes a published file, which must hold the text that is replaced. */
export async function editFile(path, from, to) {
  const text = await readFile(path, 'latin1');
  assert.ok(text.includes(from), `${path} should hold ${from}`);
  await writeFile(path, text.replaceAll(from, to), 'latin1');
}

export async function writePage(folder, name, text) {
  await mkdir(folder, { recursive: true });
  await writeFile(join(folder, name), text, 'latin1');
}

export async function copyTemplates(into) {
  await cp(templateFolder, into, { recursive: true });
}
