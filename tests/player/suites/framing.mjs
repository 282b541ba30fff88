import assert from 'node:assert/strict';
import { after, before, it } from 'node:test';
import { readCases } from '../support/answers.mjs';
import { serveAnswers } from '../support/server.mjs';
import { publishTour } from '../support/tour.mjs';

/** Browsers show the pages that the frame test of the site editor lets pass, and no others. */
export function framing(context) {
  let cases;
  let elsewhere;
  let tour;
  before(async () => {
    cases = await readCases();
    elsewhere = await serveAnswers(cases);
    const stops = cases.map(({ name }, number) => ({
      title: name,
      address: `${elsewhere.origin}${number}/0`,
      narration: `Words about ${name}.`,
    }));
    tour = await publishTour({ stops });
  });
  after(async () => {
    await elsewhere.close();
    await tour.remove();
  });

  it('shows a stop of another server exactly if its headers let it', () => context.visit(tour.folder, async (visitor) => {
    await visitor.openTour();
    await visitor.reportSiteFrame();
    const verdicts = [];
    for (const number of cases.keys()) {
      await visitor.fillSite(() => visitor.press('next'));
      await visitor.navigatorShows(`${number + 1} of ${cases.length}`);
      // A frame is filled when its page has got its pictures.
      verdicts.push(elsewhere.shown.entries.includes(number) ? 'allows' : 'refuses');
    }
    const named = (all) => cases.map(({ name }, number) => `${name}: ${all[number]}`);
    assert.deepEqual(named(verdicts), named(cases.map(({ verdict }) => verdict)));
  }, { quiet: false }));
}
