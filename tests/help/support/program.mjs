import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../../', import.meta.url));
const commands = readCommands(readFileSync(`${root}src/ui/main/MainCommands.cpp`, 'utf8'));

/** The rows of the table of commands: {menu, action, caption, shortcut, toolTip, place}. */
function readCommands(source) {
  const table = source.match(/ commands\[\] = \{\n(.*?)\n\};/s)[1].replace(/\s+/g, ' ');
  const row = /\{"([^"]*)", "(\w+)", "([^"]*)", "([^"]*)", (?:in\w+<[^>]+>|nullptr)(?:, (?:nullptr|"\w+"), (?:nullptr|"([^"]*)"), \w+, \w+(?:, (\d+))?)?/g;
  const rows = [...table.matchAll(row)].map(([, menu, action, caption, shortcut, toolTip, place]) => ({
    menu: withoutAccessKey(menu.split('|')[0]),
    action,
    caption: [...menu.split('|').slice(1), caption].map(withoutAccessKey).join(', '),
    shortcut,
    toolTip,
    place: Number(place ?? 0),
  }));
  assert.equal(rows.length, table.split('{"&').length - 1, 'every row of the table should be understood');
  return rows;
}

function withoutAccessKey(caption) {
  return caption.replace('&', '');
}

/** What the main window's menus hold: commands, {caption, shortcut}, by the caption of the menu. */
export function menus() {
  const found = new Map();
  for (const { menu, caption, shortcut } of commands)
    found.set(menu, [...(found.get(menu) ?? []), { caption, shortcut }]);
  return found;
}

/** The toolbar's buttons in their order: {toolTip, icon}; `icon` is what the picture is drawn of. */
export function toolBarButtons() {
  const buttons = commands.filter(({ place }) => place > 0).sort((left, right) => left.place - right.place);
  return buttons.map(({ toolTip, action }) => ({
    toolTip,
    icon: drawing(readFileSync(`${root}assets/icons/${action}.svg`, 'utf8')),
  }));
}

export const drawing = (svg) => svg.match(/<svg [^>]*>(.*)<\/svg>/s)[1].replace(/\n/g, '');

/** What the controls on the toolbar are called: their tool tips, and the caption of the check box. */
export function toolBarControls() {
  const [number, panels] = ['StopNumber', 'ToolBarPanels'].map((name) =>
    readFileSync(`${root}src/ui/main/${name}.cpp`, 'utf8'));
  const body = number.match(/StopNumber::StopNumber\(.*?\n\}\n/s)[0] + panels.match(/ToolBarPanels addPanels\(.*?\n\}\n/s)[0];
  return [...body.matchAll(/(?:setToolTip|new QCheckBox)\(tr\("([^"]+)"\)\)/g)].map((match) => match[1]);
}
