// Follows the program's account of now, and knows how old it is.
//
// Age is never taken from the program's clock or from the moment something arrived alone: an answer is as old as its
// request, and an event, which may have waited in a buffer while the device slept, is as old as the last request says
// by comparing the times within both. Both clocks of the browser are asked, because one stands still during sleep and
// the other may be set.

const FRESH_MS = 10_000;
const ASK_EVERY_MS = 2_000;
const ASK_AT_MOST_MS = 8_000;
// Longer than the program is ever silent on its stream.
const SILENCE_MS = 6_000;
const STREAM_AGAIN_MS = 15_000;
// An event whose age by the last request is outside of this: that comparison no longer holds, or it comes late.
const MOST_LATE_MS = 3_000;
const MOST_EARLY_MS = -1_500;

const stamp = () => ({steady: performance.now(), wall: Date.now()});
const since = (then) => Math.max(performance.now() - then.steady, Date.now() - then.wall, 0);

class Follower {
  constructor(show) {
    this.show = show;
    this.last = null;        // {observation, at, late}: what was heard, when, and how late it was then
    this.anchor = null;      // {at, time}: a moment here, and what the program's clock said not before it
    this.lost = '';          // why the program cannot be reached
    this.stream = null;
    this.streamAfter = null; // no new stream before STREAM_AGAIN_MS from then
    this.asking = null;      // the request under way
    this.askedAt = null;
    this.visible = false;
  }

  start() {
    addEventListener('visibilitychange', () => this.followVisibility());
    document.addEventListener('freeze', () => this.pause());
    document.addEventListener('resume', () => this.followVisibility());
    addEventListener('pagehide', () => this.pause());
    addEventListener('pageshow', () => this.followVisibility());
    addEventListener('online', () => this.hurry());
    setInterval(() => this.tick(), 500);
    this.followVisibility();
  }

  followVisibility() {
    if (document.visibilityState === 'hidden') {
      this.pause();
    } else {
      this.visible = true;
      this.hurry();
    }
  }

  // Nobody looks: what is on the screen when somebody looks again must not be the verdict of now.
  pause() {
    this.visible = false;
    this.last = null;
    this.closeStream();
    if (this.asking) this.asking.abort();
    this.show(this.view());
  }

  // Asks at once and tries the stream again.
  hurry() {
    this.closeStream();
    this.streamAfter = null;
    this.askedAt = null;
    if (this.asking) this.asking.abort();
    this.asking = null;
    this.tick();
  }

  tick() {
    if (this.visible !== (document.visibilityState !== 'hidden')) this.followVisibility();
    if (!this.visible) return;
    const silence = this.last ? this.age(this.last) : Infinity;
    if (silence > SILENCE_MS && this.stream) this.closeStream();
    const due = !this.askedAt || since(this.askedAt) >= ASK_EVERY_MS;
    if (!this.stream && !this.asking && due) this.ask();
    this.show(this.view());
  }

  async ask() {
    const request = new AbortController();
    this.asking = request;
    const at = stamp();
    this.askedAt = at;
    const timer = setTimeout(() => request.abort(), ASK_AT_MOST_MS);
    try {
      const answer = await fetch('/observation', {cache: 'no-store', signal: request.signal});
      if (!answer.ok) throw new Error('it answers ' + answer.status);
      const observation = await answer.json();
      if (this.asking !== request) return;
      this.lost = '';
      this.anchor = {at, time: Date.parse(observation.time)};
      this.hear({observation, at, late: 0});
      this.openStream();
    } catch (error) {
      // An answer that does not come says nothing yet: what was heard grows old by itself.
      if (this.asking === request && error.name !== 'AbortError') {
        this.lost = error instanceof TypeError ? 'No connection to the program.' : 'The program does not serve: ' + error.message + '.';
        this.streamAfter = null;
      }
    } finally {
      clearTimeout(timer);
      if (this.asking === request) this.asking = null;
      this.show(this.view());
    }
  }

  openStream() {
    if (this.stream || !this.visible || (this.streamAfter && since(this.streamAfter) < STREAM_AGAIN_MS)) return;
    const stream = new EventSource('/observation/stream');
    this.stream = stream;
    stream.onmessage = (event) => {
      if (this.stream === stream) this.takeEvent(event.data);
    };
    stream.onerror = () => {
      if (this.stream !== stream) return;
      this.closeStream();
      this.askedAt = null;
      this.tick();
    };
  }

  closeStream() {
    if (!this.stream) return;
    this.stream.close();
    this.stream = null;
    this.streamAfter = stamp();
  }

  takeEvent(text) {
    const at = stamp();
    let observation = null;
    try {
      observation = JSON.parse(text);
    } catch {
      // Treated like one without a time.
    }
    const late = observation ? since(this.anchor.at) - (Date.parse(observation.time) - this.anchor.time) : NaN;
    if (late >= MOST_EARLY_MS && late <= MOST_LATE_MS) {
      this.hear({observation, at, late: Math.max(late, 0)});
      this.show(this.view());
    } else {
      this.hurry();
    }
  }

  hear(news) {
    if (!this.last || this.age(news) <= this.age(this.last)) this.last = news;
  }

  age(heard) {
    return since(heard.at) + heard.late;
  }

  // What may be shown now. `verdict` is 'safe', 'unsafe' or 'unknown'; `why` says why it is unknown.
  view() {
    const heard = this.last;
    const view = {verdict: 'unknown', why: '', observation: heard ? heard.observation : null, silence: 0, readingAge: null};
    if (!this.visible) {
      view.why = 'Not followed while the page is hidden.';
      return view;
    }
    if (heard) {
      view.silence = this.age(heard);
      const age = heard.observation.age_s;
      if (typeof age === 'number') view.readingAge = age * 1000 + view.silence;
    }
    if (this.lost) {
      view.why = this.lost;
    } else if (!heard) {
      view.why = 'No word from the program yet.';
    } else if (view.silence >= FRESH_MS) {
      view.why = 'No word from the program.';
    } else if (heard.observation.safe !== true) {
      view.verdict = 'unsafe';
    } else if (view.readingAge === null || view.readingAge >= FRESH_MS) {
      view.why = 'The last reading is too old.';
    } else {
      view.verdict = 'safe';
    }
    return view;
  }
}

// Calls `show(view)` now, twice a second and at every change.
export function follow(show) {
  new Follower(show).start();
}
