import { after, before, describe } from 'node:test';
import { launchBrowser } from '../support/browsers.mjs';
import { Visitor } from '../support/player.mjs';
import { ways } from '../support/ways.mjs';
import { checkedByAxe } from './axe.mjs';
import { contents } from './contents.mjs';
import { edited } from './edited.mjs';
import { framing } from './framing.mjs';
import { hands } from './hands.mjs';
import { languagesOfTours } from './languages.mjs';
import { layout } from './layout.mjs';
import { leaving } from './leaving.mjs';
import { loadingAhead } from './loading-ahead.mjs';
import { older } from './older.mjs';
import { paper } from './paper.mjs';
import { places } from './places.mjs';
import { preview } from './preview.mjs';
import { standAlone } from './stand-alone.mjs';
import { stepping } from './stepping.mjs';
import { strangers } from './strangers.mjs';
import { subStops } from './sub-stops.mjs';
import { usable } from './usable.mjs';
import { waiting } from './waiting.mjs';
import { whereabouts } from './whereabouts.mjs';

// What axe looks at does not depend on where the pages come from; what headers allow is told for web servers only.
const suitesOfServers = [checkedByAxe, framing];
// Where a page comes from decides what its frames may ask of each other, what is remembered, and what an address is.
const suitesOfOrigins = [stepping, loadingAhead, leaving, strangers, waiting, places, hands, whereabouts];
// These ask the same of the templates from everywhere: in the short form they are played from a web server only.
const suitesOfLooks = [contents, subStops, standAlone, preview, edited, usable, layout, older, languagesOfTours, paper];
const suites = [...suitesOfOrigins, ...suitesOfLooks];
const suitesFromDisk = process.env.PLAYER_FORM === 'short' ? suitesOfOrigins : suites;

/** Those of these suites that the environment names in PLAYER_SUITES, with blanks between; without it all. */
function chosen(offered) {
  const names = process.env.PLAYER_SUITES?.split(' ');
  const unknown = names?.filter((name) => ![...suites, ...suitesOfServers].some((suite) => suite.name === name));
  if (unknown?.length)
    throw new Error(`No such suites: ${unknown.join(' ')}`);
  return names ? offered.filter((suite) => names.includes(suite.name)) : offered;
}

/**
 * What every suite works with: the `browser`, and visit(folder, test), which opens a folder in this way, lets the
 * test use it as a visitor and checks at the end that nothing went wrong unseen.
 */
function stage(browserName, way) {
  const openFolder = ways[way];
  const context = {
    browserName,
    way,
    // What drives Chromium stops a frame for good that goes from a stranger's page by the waiting page to the next
    // stranger's, each in a process of its own. Chromium on its own does not: see alone.mjs.
    goesFromServerToServer: browserName !== 'chromium' || way === 'from a web server',
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
    const suitesInWay = (way, offered) => describe(way, () => {
      const context = stage(browserName, way);
      before(() => { context.browser = browser; });
      for (const suite of chosen(offered))
        suite(context);
    });
    suitesInWay('from a web server', suites);
    suitesInWay('from disk', suitesFromDisk);
    suitesInWay('from a web server with https', [waiting]);
    suitesInWay('from a web server', suitesOfServers);
  });
}
