import assert from 'node:assert/strict';
import { existsSync, readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { attributes, elements, helpFolder, linksOf, pages, startPage, textOf } from './support/pages.mjs';

function reachableFrom(start) {
  const reached = new Set([start]);
  for (const name of reached)
    linksOf(name).filter(({ page }) => pages.has(page)).forEach(({ page }) => reached.add(page));
  return reached;
}

test('every page is reachable from the start page', () => {
  assert.deepEqual([...reachableFrom(startPage)].sort(), [...pages.keys()].sort());
});

for (const [name, html] of pages) {
  test(`every link of ${name} leads to a page and an anchor that exist`, () => {
    const links = linksOf(name);
    assert.ok(links.length > 0, 'a page should have links');
    const broken = links.filter(({ page, anchor }) => (
      !pages.has(page) || (anchor && !attributes(pages.get(page), 'id').includes(anchor))));
    assert.deepEqual(broken.map(({ href }) => href), []);
  });

  test(`every file that ${name} uses stands in the Help folder`, () => {
    const files = [...attributes(html, 'src'), ...attributes(html, 'href')]
      .map((address) => address.split('#')[0])
      .filter((address) => address && address !== 'data:,');
    assert.ok(files.length > 0, 'a page should use a style sheet');
    assert.deepEqual(files.filter((file) => !existsSync(join(helpFolder, file))), []);
  });

  test(`${name} has no anchor twice`, () => {
    const ids = attributes(html, 'id');
    assert.deepEqual(ids.filter((id, index) => ids.indexOf(id) !== index), []);
  });

  test(`${name} declares its language and encoding first thing and has no scripts`, () => {
    assert.match(html, /^<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8">\n/);
    assert.doesNotMatch(html, /<script|\son\w+=|javascript:/i);
  });

  test(`${name} has one main heading and skips no level`, () => {
    const levels = [...html.matchAll(/<h([1-6])\b/g)].map((match) => Number(match[1]));
    assert.equal(levels.filter((level) => level === 1).length, 1);
    assert.equal(levels[0], 1);
    assert.deepEqual(levels.filter((level, index) => index > 0 && level > levels[index - 1] + 1), []);
  });
}

/** A page's navigation, with the mark of the page itself taken off: {links, current}. */
function navigation(html) {
  const [list] = elements(html, 'nav');
  return {
    links: list.replaceAll(' aria-current="page"', ''),
    current: list.match(/href="([^"]*)" aria-current="page"/)?.[1],
  };
}

test('every page has the same navigation, which leads to every page and marks its own', () => {
  const { links } = navigation(pages.get(startPage));
  assert.deepEqual(attributes(links, 'href').sort(), [...pages.keys()].sort());
  for (const [name, html] of pages)
    assert.deepEqual(navigation(html), { links, current: name });
});

test('every picture says what it shows and has the size that the page expects', () => {
  const pictures = [...pages.values()].flatMap((html) => html.match(/<img\b[^>]*>/g) ?? []);
  assert.ok(pictures.length > 10);
  for (const picture of pictures) {
    const [[source], [width], [height], [alt]] = ['src', 'width', 'height', 'alt'].map((name) => attributes(picture, name));
    const png = readFileSync(join(helpFolder, source));
    assert.deepEqual([png.readUInt32BE(16), png.readUInt32BE(20)], [Number(width), Number(height)], source);
    assert.ok(alt.length > 20, source);
  }
});

test('every picture in the folder is used', () => {
  const used = new Set([...pages.values()].flatMap((html) => attributes(html, 'src')));
  assert.deepEqual(readdirSync(join(helpFolder, 'pictures')).filter((name) => !used.has(`pictures/${name}`)), []);
});

/** The page that tells of each window; those that only report or ask are told of where they come up. */
const windowPages = {
  frmMain: 'mainwin.htm', frmWizard1: 'wizard.htm', frmWizard2: 'wizard.htm', frmWizard3: 'wizard.htm',
  frmSelectFolderOpen: 'wizard.htm', frmSelectFolderSave: 'wizard.htm', frmBrowser: 'site.htm', frmTestFrame: 'site.htm',
  frmWarnURL: 'options.htm', frmRenameFile: 'site.htm', frmNarEdit: 'narration.htm', frmPropTab: 'props.htm',
  frmOptions: 'options.htm', frmLaunch: 'launching.htm', frmPrint: 'printing.htm', frmHelp: 'mainwin.htm',
  frmAbout: 'mainwin.htm', frmSplash: 'making.htm', frmMessage: 'site.htm', frmRecover: 'trouble.htm',
  frmEarlierSaves: 'trouble.htm', frmFind: 'mainwin.htm', frmCheck: 'check.htm', frmSignIn: 'site.htm', frmPageFiles: 'site.htm',
};

test('every window of the program has its page', () => {
  const source = fileURLToPath(new URL('../../src/ui/', import.meta.url));
  const windows = readdirSync(source, { recursive: true })
    .map((file) => String(file).match(/(frm\w+)\.h$/)?.[1]).filter(Boolean);
  assert.deepEqual(windows.sort(), Object.keys(windowPages).sort());
  assert.deepEqual(Object.values(windowPages).filter((page) => !pages.has(page)), []);
});

test('every page has a title of its own', () => {
  const titles = [...pages.values()].map((html) => elements(html, 'title').map(textOf).join());
  assert.equal(new Set(titles).size, pages.size);
  assert.ok(titles.every((title) => title.includes('Wendmark Help')), titles.join('; '));
});

test('the start page lists every section of the other pages under its own heading', () => {
  const sections = [...pages].filter(([name]) => name !== startPage).flatMap(([name, html]) => (
    [...html.matchAll(/<h2 id="([^"]+)">(.*?)<\/h2>/g)].map(([, id, heading]) => ({ href: `${name}#${id}`, heading }))));
  assert.ok(sections.length > 0);
  const listed = [...pages.get(startPage).matchAll(/<li><a href="([^"]*#[^"]*)">(.*?)<\/a><\/li>/g)]
    .map(([, href, heading]) => ({ href, heading }));
  const byAddress = (left, right) => left.href.localeCompare(right.href);
  assert.deepEqual(listed.sort(byAddress), sections.sort(byAddress));
});
