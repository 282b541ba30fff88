import { after, before, describe } from 'node:test';
import { launchBrowser } from '../support/browsers.mjs';
import { Visitor } from '../support/player.mjs';
import { ways } from '../support/ways.mjs';
import { checkedByAxe } from './axe.mjs';
import { contents } from './contents.mjs';
import { edited } from './edited.mjs';
import { framing } from './framing.mjs';
import { leaving } from './leaving.mjs';
import { loadingAhead } from './loading-ahead.mjs';
import { preview } from './preview.mjs';
import { standAlone } from './stand-alone.mjs';
import { stepping } from './stepping.mjs';
import { strangers } from './strangers.mjs';
import { subStops } from './sub-stops.mjs';
import { usable } from './usable.mjs';

const suites = [
  stepping, contents, subStops, loadingAhead, leaving, standAlone, strangers, preview, edited, usable,
];

/**
 * What every suite works with: the `browser`, and visit(folder, test), which opens a folder in this way, lets the
 * test use it as a visitor and checks at the end that nothing went wrong unseen.
 */
function stage(browserName, openFolder) {
  const context = {
    browserName,
    browser: null,
    async visit(folder, test, { browser = context.browser, quiet = true, allowed = [], ...window } = {}) {
      const { base, close } = await openFolder(folder);
      const visitor = await Visitor.arrive(browser, base, window);
      try {
        await test(visitor, base);
        if (quiet)
          visitor.assertQuiet({ allowed });
      } finally {
        await visitor.leave();
        await close();
      }
    },
  };
  return context;
}

/** Plays tours in one browser, from a web server and from disk. */
export function playEverywhere(browserName) {
  describe(browserName, () => {
    let browser;
    before(async () => { browser = await launchBrowser(browserName); });
    after(() => browser.close());
    const suitesInWay = (way, chosen) => describe(way, () => {
      const context = stage(browserName, ways[way]);
      before(() => { context.browser = browser; });
      for (const suite of chosen)
        suite(context);
    });
    for (const way of Object.keys(ways))
      suitesInWay(way, suites);
    // What axe looks at does not depend on where the pages come from; what headers allow is told for web servers only.
    suitesInWay('from a web server', [checkedByAxe, framing]);
  });
}
