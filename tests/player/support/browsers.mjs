import puppeteer from 'puppeteer-core';
import { startDeadEnd } from './server.mjs';

function chromiumOptions({ proxyPort }) {
  return {
    browser: 'chrome',
    executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
    args: [
      `--proxy-server=http://127.0.0.1:${proxyPort}`,
      // Chromium refuses to run as root with its sandbox.
      ...(process.getuid?.() === 0 ? ['--no-sandbox'] : []),
    ],
  };
}

function firefoxOptions({ proxyPort, dark }) {
  return {
    browser: 'firefox',
    executablePath: process.env.FIREFOX ?? '/usr/bin/firefox-esr',
    extraPrefsFirefox: {
      'network.proxy.type': 1,
      'network.proxy.http': '127.0.0.1',
      'network.proxy.http_port': proxyPort,
      'network.proxy.ssl': '127.0.0.1',
      'network.proxy.ssl_port': proxyPort,
      'layout.css.prefers-color-scheme.content-override': dark ? 0 : 1,
    },
  };
}

const optionsOf = { chromium: chromiumOptions, firefox: firefoxOptions };

/**
 * Starts 'chromium' or 'firefox', headless, with everything but the loopback out of reach.
 * Returns {name, dark, newPage, outside, close}: `outside` logs the hosts it tried to reach elsewhere.
 */
export async function launchBrowser(name, { dark = false } = {}) {
  const deadEnd = await startDeadEnd();
  const browser = await puppeteer.launch({
    ...optionsOf[name]({ proxyPort: deadEnd.port, dark }),
    headless: true,
    acceptInsecureCerts: true,
  });
  return {
    name,
    dark,
    outside: deadEnd.requests,
    async newPage() {
      const page = await browser.newPage();
      if (name === 'chromium')
        await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: dark ? 'dark' : 'light' }]);
      return page;
    },
    async close() {
      await browser.close();
      await deadEnd.close();
    },
  };
}
