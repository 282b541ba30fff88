import assert from 'node:assert/strict';
import { after, before, describe, it } from 'node:test';
import { stopTag } from '../support/player.mjs';
import { serveFolder } from '../support/server.mjs';
import { numberedStops, publishTour, scratchFolder, sitePage, writePage } from '../support/tour.mjs';

/** What a page could say that wants to take the tour over. */
const forgeries = `<script>
  const messages = [
    { tour: 'go', to: 'next' },
    { tour: 'go', to: 'exit' },
    { tour: 'stop', stop: 3, address: 'https://elsewhere.example/' },
    { tour: 'status', text: '${stopTag}99' },
    { tour: 'sub-stop', address: 'javascript:alert(1)' },
    { tour: 'opening' },
    null,
    'text',
  ];
  for (const message of messages) {
    parent.postMessage(message, '*');
    for (let i = 0; i < parent.frames.length; i += 1)
      parent.frames[i].postMessage(message, '*');
  }
</script>`;

/** Pages of stops come from anywhere; they have no say in the tour. */
export function strangers(context) {
  describe('a stop on another server', () => {
    let tour;
    let elsewhere;
    let remote;
    before(async () => {
      elsewhere = await scratchFolder();
      await writePage(elsewhere.folder, 'stranger.htm', sitePage('Stranger', forgeries));
      remote = await serveFolder(elsewhere.folder);
      const stops = numberedStops(3);
      stops[0].address = `${remote.origin}stranger.htm`;
      tour = await publishTour({ stops });
    });
    after(async () => {
      await remote.close();
      await elsewhere.remove();
      await tour.remove();
    });

    it('cannot move the tour, forge a stop or leave it', () => context.visit(tour.folder, async (visitor) => {
      await visitor.openTour();
      await visitor.arriveAt(tour.stops[0], () => visitor.press('next'));
      await visitor.navigatorShows('1 of 3');
      // Messages arrive in order: had one of the stranger's been heeded, the next stop would not be the second.
      await visitor.arriveAt(tour.stops[1], () => visitor.press('next'));
      const tags = visitor.happened.entries.filter((event) => event.what === 'status').map((event) => event.text);
      const stops = tags.filter((tag) => tag !== stopTag); // That one is the opening page's.
      assert.deepEqual([...new Set(stops)], [`${stopTag}1`, `${stopTag}2`]);
    }, { allowed: [remote.origin] }));
  });
}
