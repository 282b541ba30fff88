import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const helpFolder = fileURLToPath(new URL('../../../assets/Help/', import.meta.url));
export const startPage = 'index.htm';

/** Values of an attribute, in the order of the page. The help pages quote all attributes with double quotes. */
export function attributes(html, name) {
  return [...html.matchAll(new RegExp(`<[^>]*\\s${name}="([^"]*)"`, 'g'))].map((match) => match[1]);
}

/** The texts between tags of this name, with whatever tags stand inside. */
export function elements(html, name) {
  return [...html.matchAll(new RegExp(`<${name}(?:\\s[^>]*)?>(.*?)</${name}>`, 'gs'))].map((match) => match[1]);
}

export function textOf(html) {
  return html.replace(/<[^>]*>/g, '').replace(/\s+/g, ' ').trim();
}

/** The help pages, by file name. */
export const pages = new Map(readdirSync(helpFolder)
  .filter((name) => name.endsWith('.htm'))
  .map((name) => [name, readFileSync(join(helpFolder, name), 'utf8')]));

/** Where a page's links lead: {href, page, anchor}; the page is the linking one where the link names none. */
export function linksOf(name) {
  return [...pages.get(name).matchAll(/<a\s[^>]*href="([^"]*)"/g)].map(([, href]) => {
    const [page, anchor = ''] = href.split('#');
    return { href, page: page || name, anchor };
  });
}
