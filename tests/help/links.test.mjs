import assert from 'node:assert/strict';
import { existsSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
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
