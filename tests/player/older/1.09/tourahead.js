'use strict';

/**
 * Loads the pages of all stops ahead, in the frame of no height, so that they come out of the browser's cache when
 * the visitor gets to them.
 */
(() => {
  /** Opens an address in a frame of its own: only then is it certain whose load event is heard. */
  function openFrame(address) {
    const frame = document.createElement('iframe');
    frame.name = 'loading';
    frame.title = 'Stop loaded ahead';
    frame.src = address;
    document.querySelector('main').append(frame);
    return frame;
  }

  /** The address that the page of a stop tells. */
  function addressToldBy(frame) {
    return new Promise((resolve) => {
      addEventListener('message', function listen(event) {
        if (event.source !== frame.contentWindow || event.data?.tour !== 'stop')
          return;
        removeEventListener('message', listen);
        resolve(event.data.address);
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
    const address = await Promise.race([addressToldBy(stopFrame), timeIsUp]);
    stopFrame.remove();
    if (!isPageAddress(address))
      return;
    const siteFrame = openFrame(address);
    await Promise.race([loaded(siteFrame), timeIsUp]);
    siteFrame.remove();
  }

  async function loadStops({ stopCount, timeForEach }) {
    for (let stop = 1; stop <= stopCount; stop += 1)
      await loadStop(stop, elapsed(timeForEach));
  }

  tourPage.hear('load-ahead', loadStops);
})();
