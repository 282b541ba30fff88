import assert from 'node:assert/strict';
import { test } from 'node:test';
import { elements, pages, textOf } from './support/pages.mjs';
import { drawing, menus, toolBarButtons, toolBarControls } from './support/program.mjs';

const page = pages.get('mainwin.htm');

/** The part of the page from the heading with this id up to the next heading. */
function section(id) {
  const found = page.match(new RegExp(`<h[23] id="${id}">.*?(?=<h[23]|</main>)`, 's'));
  assert.ok(found, `there should be a section ${id}`);
  return found[0];
}

/** The entries of the section's list: {name, keys, icon, meaning}. */
function entries(id) {
  const meanings = elements(section(id), 'dd').map(textOf);
  const terms = elements(section(id), 'dt');
  assert.equal(terms.length, meanings.length, `every term of ${id} should have one meaning`);
  return terms.map((term, index) => ({
    name: textOf(term.replace(/<kbd>.*?<\/kbd>/g, '')),
    keys: elements(term, 'kbd').join(),
    icon: term.includes('<svg') ? drawing(term) : '',
    meaning: meanings[index],
  }));
}

test('the help knows the six menus of the main window', () => {
  assert.deepEqual([...menus().keys()], ['File', 'Edit', 'Stops', 'Navigate', 'View', 'Help']);
});

for (const [menu, commands] of menus()) {
  const told = entries(menu.toLowerCase());

  test(`the help names the commands of the menu ${menu} with their keys, in their order`, () => {
    assert.deepEqual(
      told.map(({ name, keys }) => [name, keys]),
      commands.map(({ caption, shortcut }) => [caption, shortcut]),
    );
  });

}

test('every menu heading is the caption of its menu', () => {
  for (const menu of menus().keys())
    assert.equal(elements(section(menu.toLowerCase()), 'h3').join(), menu);
});

test('the help shows the buttons of the toolbar with their tool tips and icons, in their order', () => {
  assert.deepEqual(
    entries('toolbar').map(({ name, icon }) => ({ toolTip: name, icon })),
    toolBarButtons(),
  );
});

test('the help names the three controls on the toolbar', () => {
  assert.equal(toolBarControls().length, 3);
  assert.deepEqual(entries('controls').map(({ name }) => name), toolBarControls());
});

test('every entry says something', () => {
  const lists = [...menus().keys()].map((menu) => menu.toLowerCase()).concat('toolbar', 'controls');
  assert.deepEqual(lists.flatMap(entries).filter(({ meaning }) => !/\w.*\.$/.test(meaning)), []);
});
