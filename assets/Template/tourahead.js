'use strict';

/**
 * Loads the pages of the next stops ahead, in the frame of no height, so that they come out of the browser's cache when
 * the visitor gets to them. Browsers that are asked to save data load none. The frame also reads the titles of all
 * stops from the contents page.
 */
(() => {
  const stopsAhead = 3;
  let task = null; // What the tour has asked for: {stopCount, timeForEach}.
  let shownStop = 0;
  let loadedStop = 0;
  let isLoading = false;

  /**
   * Opens an address in a frame of its own: only then is it certain whose load event is heard. A page of somebody
   * else's may run there as it does in the site frame, but starts no download, opens no window and asks nothing.
   */
  function openFrame(address, { name = 'loading', isForeign = false } = {}) {
    const frame = document.createElement('iframe');
    frame.name = name;
    frame.title = tourLanguage.say('ahead');
    if (isForeign)
      frame.sandbox = 'allow-scripts allow-same-origin';
    frame.src = address;
    document.querySelector('main').append(frame);
    return frame;
  }

  /** The first message of this kind that the page in a frame sends. */
  function messageOf(frame, kind) {
    return new Promise((resolve) => {
      addEventListener('message', function listen(event) {
        if (event.source !== frame.contentWindow || event.data?.tour !== kind)
          return;
        removeEventListener('message', listen);
        resolve(event.data);
      });
    });
  }

  function loaded(frame) {
    return new Promise((resolve) => { frame.addEventListener('load', resolve, { once: true }); });
  }

  function elapsed(milliseconds) {
    return new Promise((resolve) => { setTimeout(resolve, milliseconds); });
  }

  async function loadStop(stop, timeIsUp) {
    const stopFrame = openFrame(`page${stop}.htm`);
    const told = await Promise.race([messageOf(stopFrame, 'stop'), timeIsUp]);
    stopFrame.remove();
    if (!isPageAddress(told?.address))
      return;
    const siteFrame = openFrame(told.address, { isForeign: true });
    await Promise.race([loaded(siteFrame), timeIsUp]);
    siteFrame.remove();
  }

  function isWanted(stop) {
    return task && stop <= Math.min(task.stopCount, shownStop + stopsAhead);
  }

  async function loadStops() {
    if (isLoading || navigator.connection?.saveData)
      return;
    isLoading = true;
    while (isWanted(Math.max(loadedStop, shownStop) + 1)) {
      loadedStop = Math.max(loadedStop, shownStop) + 1;
      await loadStop(loadedStop, elapsed(task.timeForEach));
    }
    isLoading = false;
  }

  async function tellTitles() {
    const frame = openFrame('toc.htm', { name: 'titles' });
    const { titles } = await messageOf(frame, 'titles');
    frame.remove();
    tourPage.tell({ tour: 'titles', titles });
  }

  tourPage.hear('load-ahead', (asked) => {
    task = asked;
    loadStops();
  });
  tourPage.hear('state', ({ stop }) => {
    shownStop = stop;
    loadStops();
  });
  tourPage.hear('tell-titles', tellTitles);
})();
