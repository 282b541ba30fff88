/** Things that happened, in order, and a way to wait for the next one of a kind. */
export class EventLog {
  #name;
  #entries = [];
  #waiting = new Set();

  constructor(name) {
    this.#name = name;
  }

  get length() {
    return this.#entries.length;
  }

  get entries() {
    return [...this.#entries];
  }

  since(position) {
    return this.#entries.slice(position);
  }

  add(entry) {
    this.#entries.push(entry);
    for (const waiting of [...this.#waiting]) {
      if (waiting.matches(entry))
        waiting.resolve(entry);
    }
  }

  /** The first entry at or after `since` that matches, as soon as there is one. */
  waitFor(matches, what, { since = 0, timeout = 15000 } = {}) {
    const known = this.#entries.slice(since).find(matches);
    if (known)
      return Promise.resolve(known);
    return new Promise((resolve, reject) => {
      const waiting = { matches };
      const timer = setTimeout(() => {
        this.#waiting.delete(waiting);
        const seen = this.#entries.slice(since).map((entry) => JSON.stringify(entry).slice(0, 200));
        reject(new Error(`Waited in vain for ${what}. What happened (${this.#name}):\n${seen.join('\n')}`));
      }, timeout);
      waiting.resolve = (entry) => {
        clearTimeout(timer);
        this.#waiting.delete(waiting);
        resolve(entry);
      };
      this.#waiting.add(waiting);
    });
  }
}
