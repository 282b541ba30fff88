import { readFileSync } from 'node:fs';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../../../', import.meta.url));
const source = readFileSync(`${root}src/ui/main/frmMain.cpp`, 'utf8');

/** Keys as menus show them. */
const standardKeys = { New: 'Ctrl+N', Open: 'Ctrl+O', Save: 'Ctrl+S', Print: 'Ctrl+P' };
const keyNames = {
  CTRL: 'Ctrl', SHIFT: 'Shift', Insert: 'Ins', Delete: 'Del', PageDown: 'PgDown', PageUp: 'PgUp', Escape: 'Esc', Comma: ',',
};

function shortcut(expression = '') {
  const standard = expression.match(/QKeySequence::(\w+)/);
  if (standard) {
    const key = standardKeys[standard[1]];
    if (!key)
      throw new Error(`No text is known for ${expression}`);
    return key;
  }
  const keys = [...expression.matchAll(/Qt::(?:Key_)?(\w+)/g)].map((match) => match[1]);
  return keys.map((key) => keyNames[key] ?? key).join('+');
}

const withoutAccessKey = (caption) => caption.replace('&', '');

/** A menu's commands: {caption, shortcut}. */
function commandsIn(body) {
  const calls = /\baddAction\((?:\s*menu,\s*"\w+",)?\s*tr\("([^"]+)"\)(?:,\s*(QKeySequence(?:::\w+|\([^)]*\))|\{\}))?/g;
  return [...body.matchAll(calls)].map(([, caption, key]) => ({
    caption: withoutAccessKey(caption),
    shortcut: shortcut(key),
  }));
}

/** What the main window's menus hold: commands by the caption of the menu. */
export function menus() {
  const bodies = source.split(/menuBar\(\)->addMenu\(/).slice(1).map((text) => text.split(/\n}\n/)[0]);
  return new Map(bodies.map((body) => [withoutAccessKey(body.match(/^tr\("([^"]+)"\)/)[1]), commandsIn(body)]));
}

/** The toolbar's buttons in their order: {toolTip, icon}; `icon` is what the picture is drawn of. */
export function toolBarButtons() {
  const table = source.match(/toolBarButtons\[\] = \{\n(.*?)\n\};/s)[1];
  return [...table.matchAll(/\{"\w+", "([^"]+)", "(\w+)"/g)].map(([, toolTip, action]) => ({
    toolTip,
    icon: drawing(readFileSync(`${root}assets/icons/${action}.svg`, 'utf8')),
  }));
}

export const drawing = (svg) => svg.match(/<svg [^>]*>(.*)<\/svg>/s)[1].replace(/\n/g, '');

/** What the controls on the toolbar are called: their tool tips, and the caption of the check box. */
export function toolBarControls() {
  const body = source.match(/void frmMain::setupToolBar\(\) \{(.*?)\n\}\n/s)[1];
  return [...body.matchAll(/(?:->setToolTip|new QCheckBox)\(tr\("([^"]+)"\)\)/g)].map((match) => match[1]);
}
