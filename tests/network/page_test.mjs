// What the page says while the program, the network, the device or its clocks misbehave: src/network/page/live.js in a
// made-up browser, whose time stands still until a test moves it.
import assert from 'node:assert';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';

const source = readFileSync(process.env.ORVALIS_PAGE + '/live.js');

class Browser {
  constructor(script) {
    this.steady = 1_000;                          // ms; stands still while the device sleeps
    this.wall = Date.parse('2026-01-01T00:00:00Z');  // ms; may be set
    this.program = this.wall;                     // the program's clock
    this.requests = [];
    this.streams = [];
    this.listeners = {};
    this.script = script;
  }

  async open() {
    const browser = this;
    const listen = (name, call) => (browser.listeners[name] = call);
    const set = (name, value) => Object.defineProperty(globalThis, name, {value, configurable: true, writable: true});
    this.document = {visibilityState: 'visible', addEventListener: listen};
    set('document', this.document);
    set('addEventListener', listen);
    set('performance', {now: () => browser.steady});
    set('Date', {now: () => browser.wall, parse: (text) => new RealDate(text).getTime()});
    set('setInterval', (tick) => (browser.tick = tick));
    set('setTimeout', () => 0);
    set('clearTimeout', () => {});
    set('fetch', (path, {signal}) => new Promise((answer, fail) => {
      signal.addEventListener('abort', () => fail(new DOMException('', 'AbortError')));
      browser.requests.push({answer: (observation) => answer({ok: true, json: async () => observation}), fail});
    }));
    set('EventSource', class {
      constructor() { browser.streams.push(this); }
      close() { this.closed = true; }
    });
    const module = await import('data:text/javascript,' + encodeURIComponent(source + '\n//' + Math.random()));
    module.follow((view) => (browser.view = view));
    return this;
  }

  // Time passes everywhere, in the steps of the page's own timer.
  async pass(ms) {
    for (; ms > 0; ms -= 500) {
      this.steady += 500;
      this.wall += 500;
      this.program += 500;
      await this.look();
    }
  }

  async look() {
    this.tick();
    await settle();
  }

  observation(more = {}) {
    return {time: new RealDate(this.program).toISOString(), safe: true, age_s: 1, ...more};
  }

  async answer(observation = this.observation()) {
    this.requests.pop().answer(observation);
    await settle();
  }

  event(observation = this.observation()) {
    this.streams.at(-1).onmessage({data: typeof observation === 'string' ? observation : JSON.stringify(observation)});
  }

  // Followed by a stream, safe.
  static async safe() {
    const browser = await new Browser().open();
    assert.equal(browser.view.verdict, 'unknown');
    await browser.answer();
    assert.equal(browser.view.verdict, 'safe');
    return browser;
  }
}

const RealDate = Date;
const settle = async () => {
  for (let i = 0; i < 10; ++i) await null;
};

test('silence of the program, asked for or streamed, ends in unknown within ten seconds', async () => {
  const browser = await Browser.safe();
  await browser.pass(8_500);
  assert.equal(browser.view.verdict, 'safe');  // its reading is a second older
  await browser.pass(500);
  assert.equal(browser.view.verdict, 'unknown');
});

test('an answer is as old as its request', async () => {
  const browser = await new Browser().open();
  const made = browser.observation();
  await browser.pass(7_000);
  await browser.answer(made);
  assert.equal(browser.view.verdict, 'safe');
  await browser.pass(2_000);
  assert.equal(browser.view.verdict, 'unknown');
});

test('the age of the reading counts, not only that of the answer', async () => {
  const browser = await Browser.safe();
  browser.event(browser.observation({age_s: 9.4}));
  assert.equal(browser.view.verdict, 'safe');
  await browser.pass(1_000);
  assert.equal(browser.view.verdict, 'unknown');
});

test('what waited in a buffer is asked for again', async () => {
  const browser = await Browser.safe();
  const old = browser.observation();
  await browser.pass(4_000);
  const before = browser.view.silence;
  browser.event(old);
  await settle();
  assert.ok(browser.view.silence >= before);
  assert.equal(browser.requests.length, 1);
  assert.ok(browser.streams[0].closed);
});

test('a device that slept, by either clock, shows nothing of before', async () => {
  for (const clock of ['wall', 'steady']) {
    const browser = await Browser.safe();
    browser[clock] += 3_600_000;
    await browser.look();
    assert.equal(browser.view.verdict, 'unknown', clock);
  }
});

test('a clock that is set back keeps nothing fresh', async () => {
  const browser = await Browser.safe();
  browser.wall -= 3_600_000;
  await browser.pass(10_000);
  assert.equal(browser.view.verdict, 'unknown');
});

test('a hidden page knows nothing, and nothing until it has asked again', async () => {
  const browser = await Browser.safe();
  browser.document.visibilityState = 'hidden';
  browser.listeners.visibilitychange();
  assert.equal(browser.view.verdict, 'unknown');
  browser.document.visibilityState = 'visible';
  browser.listeners.visibilitychange();
  await settle();
  assert.equal(browser.view.verdict, 'unknown');
  await browser.answer();
  assert.equal(browser.view.verdict, 'safe');
});

test('a program that cannot be reached is unknown at once', async () => {
  const browser = await Browser.safe();
  browser.streams[0].onerror();
  browser.requests.pop().fail(new TypeError('refused'));
  await settle();
  assert.equal(browser.view.verdict, 'unknown');
});

test('only a plain true is safe', async () => {
  for (const [more, verdict] of [[{safe: 'true'}, 'unsafe'], [{safe: 1}, 'unsafe'], [{safe: undefined}, 'unsafe'],
                                 [{age_s: null}, 'unknown'], [{age_s: '1'}, 'unknown']]) {
    const browser = await Browser.safe();
    browser.event(browser.observation(more));
    assert.equal(browser.view.verdict, verdict, JSON.stringify(more));
  }
  const browser = await Browser.safe();
  browser.event('{"safe": true');
  assert.equal(browser.requests.length, 1);
});
