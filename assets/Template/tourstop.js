'use strict';

/** The page of one stop: it tells the tour what to show, or brings a visitor into the tour who opened it alone. */
(() => {
  // How long to wait for an answer of the frameset around this page, and for playtour.htm to show signs of life.
  // From disk a missing file may give no sign at all in some browsers, but nothing there takes long.
  const framesetPatience = 3000;
  const tourPatience = location.protocol === 'file:' ? 3000 : 20000;

  let state = {};

  /** The tour around this page where it can be read: on a web server, and in the editor. Else null. */
  function readableTour() {
    try {
      return parent !== self && typeof parent.homePath === 'string' && parent.nav.document ? parent : null;
    } catch (error) {
      return null;
    }
  }

  function tourReachedByMessages() {
    return {
      homePath: '',
      nav: {
        set status(text) {
          tourPage.tell({ tour: 'status', text });
        },
      },
    };
  }

  function readStop() {
    describeStop({ homePath: '', nav: {} });
    return { tour: 'stop', stop: linkPage, address: absolute(linkURL) };
  }

  /**
   * Names of files are names in the folder of the tour, which is this page's folder. Empty for what is no address.
   */
  function absolute(address) {
    try {
      return new URL(address, location.href).href;
    } catch (error) {
      return '';
    }
  }

  function announce() {
    describeStop(readableTour() || tourReachedByMessages());
  }

  function linkAddress() {
    const holder = document.getElementById('address');
    const address = holder ? holder.textContent.trim() : '';
    if (!address || !isPageAddress(absolute(address)))
      return;
    const link = document.createElement('a');
    link.href = absolute(address);
    link.target = '_blank';
    link.rel = 'noopener';
    link.textContent = address;
    holder.replaceChildren(link);
  }

  /** The words wait until the page of the former stop is gone; other things than the tour may lie around this page. */
  function hideWords() {
    document.documentElement.style.visibility = 'hidden';
    setTimeout(() => {
      if (!tourPage.isInTour())
        showWords();
    }, framesetPatience);
  }

  function showWords() {
    document.documentElement.style.visibility = '';
  }

  /** What this page offers depends on where it stands in the tour. */
  function offer({ stop, stopCount, inEditor }) {
    for (const end of document.querySelectorAll('[data-tour-end]')) {
      end.hidden = stop !== stopCount || stop !== linkPage;
      for (const exit of end.querySelectorAll('[data-go="exit"]'))
        exit.hidden = Boolean(inEditor);
    }
    for (const button of document.querySelectorAll('[data-tour-copy], [data-tour-print]'))
      button.hidden = inEditor !== false;
  }

  /** Browsers give pages on disk and on servers without encryption no other way to the clipboard. */
  function copyBySelection(text) {
    const field = document.createElement('textarea');
    field.value = text;
    document.body.append(field);
    field.select();
    const isCopied = document.execCommand('copy');
    field.remove();
    return isCopied;
  }

  async function copyLink(button) {
    const link = new URL(`playtour.htm#stop-${linkPage}`, location.href).href;
    const isCopied = await navigator.clipboard?.writeText(link).then(() => true, () => false);
    button.textContent = isCopied || copyBySelection(link) ? tourLanguage.say('linkCopied') : link;
    button.focus();
  }

  /** The title without the number before it. */
  function tellTitle() {
    const heading = document.querySelector('[data-page-title]');
    const text = heading ? heading.textContent.replace(/\s+/g, ' ').trim() : '';
    tourPage.tell({ tour: 'title', title: text.replace(/^[^\u2014]*\d\s*\u2014/, '') });
  }

  /** Links in a narration open where the pages of the stops are shown, not in the small narration frame. */
  function aimLinks() {
    for (const link of document.querySelectorAll('main a[href]:not([target])')) {
      const leavesPage = /^(https?|file):/.test(link.href) && !link.getAttribute('href').startsWith('#');
      const isStop = /^page\d+\.htm$/i.test(link.getAttribute('href'));
      if (leavesPage && !isStop)
        link.target = 'mw';
    }
  }

  function bringIntoTour() {
    const startedFromPage = document.referrer || (self.navigation?.activation?.from?.url ?? '');
    const linked = /^(https?|file):/.test(startedFromPage) ? '-linked' : '';
    location.replace(`playtour.htm#stop-${linkPage}${linked}`);
  }

  /** Loads the tour in an invisible frame, which says that it is there and stops at that. */
  function findTour() {
    return new Promise((resolve) => {
      const probe = document.createElement('iframe');
      const finish = (found) => {
        probe.remove();
        resolve(found);
      };
      addEventListener('message', (event) => {
        if (event.source === probe.contentWindow && event.data && event.data.tour === 'here')
          finish(true);
      });
      probe.addEventListener('load', () => setTimeout(finish, 500, false));
      setTimeout(finish, tourPatience, false);
      probe.hidden = true;
      probe.src = 'playtour.htm#here';
      document.body.append(probe);
    });
  }

  async function leaveSolitude() {
    if (tourPage.isInTour())
      return;
    if (await findTour())
      bringIntoTour();
    else
      goToHomeSite();
  }

  /** Shows an address in the site frame while the stop stays the same. Narrations call it in their links. */
  self.loadSubStop = (address) => {
    if (address)
      tourPage.tell({ tour: 'sub-stop', address: absolute(address) });
  };

  if (parent !== self)
    hideWords();
  tourPage.hear('show', showWords);
  tourPage.hear('announce', announce);
  tourPage.hear('state', (told) => {
    state = told;
    offer(state);
  });
  document.addEventListener('click', (event) => {
    const button = event.target.closest('[data-tour-copy]');
    if (button)
      copyLink(button);
    // Browsers print the frame that asks for it; what they print of a frameset by themselves is any of them.
    if (event.target.closest('[data-tour-print]'))
      print();
  });
  tourPage.hear('state', aimLinks);
  tourPage.tell(readStop());
  tourPage.documentReady.then(() => {
    linkAddress();
    tellTitle();
    // The editor shows what its author types.
    document.addEventListener('bodyreplaced', () => {
      linkAddress();
      aimLinks();
      offer(state);
    });
    setTimeout(leaveSolitude, parent === self ? 0 : framesetPatience);
  });
})();
