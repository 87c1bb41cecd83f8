import {drawCurves} from '/curves.js';
import {follow} from '/live.js';

const DASH = '–';
const byId = (id) => document.getElementById(id);

const UNITS = {
  metric: {temperature: {sign: '°C', from: (c) => c, step: (c) => c}, speed: {sign: 'm/s', factor: 1}},
  kilometres: {temperature: {sign: '°C', from: (c) => c, step: (c) => c}, speed: {sign: 'km/h', factor: 3.6}},
  miles: {
    temperature: {sign: '°F', from: (c) => c * 1.8 + 32, step: (c) => c * 1.8},
    speed: {sign: 'mph', factor: 1 / 0.44704},
  },
};
let units = kept('units', Object.keys(UNITS));

// How each kind of value is written: {sign, decimals, convert}.
function measure(kind) {
  const {temperature, speed} = UNITS[units];
  return {
    temperature: {sign: temperature.sign, decimals: 1, convert: temperature.from},
    difference: {sign: temperature.sign, decimals: 1, convert: temperature.step},
    speed: {sign: speed.sign, decimals: 1, convert: (value) => value * speed.factor},
    percent: {sign: '%', decimals: 0, convert: (value) => value},
    counts: {sign: '', decimals: 0, convert: (value) => value},
  }[kind];
}

function number(value, kind) {
  const {decimals, convert} = measure(kind);
  return convert(value).toFixed(decimals).replace('-', '−');
}

const WORDS = [
  ['Sky', (o) => o.words.sky, {Clear: 'Clear', PCloudy: 'Partly cloudy', Cloudy: 'Cloudy'}],
  ['Wind', (o) => o.words.wind, {}],
  ['Rain', (o) => o.words.rain, {}],
  ['Light', (o) => o.words.light, {}],
];

const ON_OFF = {Y: 'on', N: 'off', '?': 'unknown'};
const VALUES = [
  ['Air', 'ambient_c', 'temperature'],
  ['Sky', 'sky_c', 'temperature'],
  ['Clear sky', 'clear_sky_c', 'temperature'],
  ['Sky colder by', 'difference_c', 'difference'],
  ['Dew point', 'dew_point_c', 'temperature'],
  ['Humidity', 'humidity_percent', 'percent'],
  ['Wind', 'wind_m_s', 'speed'],
  ['Average wind', 'wind_average_m_s', 'speed'],
  ['Gust', 'wind_gust_m_s', 'speed'],
  ['Cloud cover', 'cloud_cover_percent', 'percent'],
  ['Rain count', 'rain_counts', 'counts'],
  ['Light count', 'light_counts', 'counts'],
];

const SIGNS = {
  safe: 'M4 13l5 5L20 6',
  unsafe: 'M5 5l14 14M19 5L5 19',
  unknown: 'M8 9a4 4 0 1 1 5.5 3.7c-1 .5-1.5 1-1.5 2.3M12 18.5v1',
};
const HEADINGS = {safe: 'SAFE', unsafe: 'UNSAFE', unknown: 'UNKNOWN'};

// "42 s", "2 min", "3 h", "4 days"
function roughTime(ms) {
  const seconds = Math.floor(ms / 1000);
  if (seconds < 120) return seconds + ' s';
  if (seconds < 7200) return Math.floor(seconds / 60) + ' min';
  if (seconds < 172800) return Math.floor(seconds / 3600) + ' h';
  return Math.floor(seconds / 86400) + ' days';
}

function timeOfDay(time, withSeconds = false) {
  const format = {hour: '2-digit', minute: '2-digit', hourCycle: 'h23'};
  if (withSeconds) format.second = '2-digit';
  return new Date(time).toLocaleTimeString([], format);
}

// Changes what is on the page only where it differs, so that a reader or a selection is not disturbed.
function setText(element, text) {
  if (element.textContent !== text) element.textContent = text;
}

function setTexts(list, texts, tag) {
  while (list.children.length > texts.length) list.lastChild.remove();
  while (list.children.length < texts.length) list.append(document.createElement(tag));
  texts.forEach((text, i) => setText(list.children[i], text));
}

// Adds a pair to a list of terms and returns the element of its value.
function addTerm(list, term) {
  const row = document.createElement('div');
  const name = document.createElement('dt');
  const value = document.createElement('dd');
  name.textContent = term;
  row.append(name, value);
  list.append(row);
  return value;
}

const wordCells = WORDS.map(([term]) => addTerm(byId('words'), term));
const valueCells = VALUES.map(([term]) => addTerm(byId('values'), term));
const heaterCell = addTerm(byId('values'), 'Heater');
const relayCell = addTerm(byId('values'), 'Unit’s relay');

// A dash, which is read as "unknown".
function unknownMark() {
  const dash = document.createElement('span');
  const spoken = document.createElement('span');
  dash.textContent = DASH;
  dash.setAttribute('aria-hidden', 'true');
  spoken.textContent = 'unknown';
  spoken.className = 'unseen';
  return [dash, spoken];
}

function setCell(cell, text) {
  if (text !== null) {
    setText(cell, text);
  } else if (cell.children.length === 0) {
    cell.replaceChildren(...unknownMark());
  }
}

function showValues(observation) {
  WORDS.forEach(([, read, names], i) => {
    const word = observation ? read(observation) : null;
    setCell(wordCells[i], word === null ? null : names[word] || word);
  });
  VALUES.forEach(([, key, kind], i) => {
    const value = observation ? observation.values[key] : null;
    const known = typeof value === 'number';
    setCell(valueCells[i], known ? (number(value, kind) + ' ' + measure(kind).sign).trim() : null);
  });
  for (const [cell, key] of [[heaterCell, 'heater'], [relayCell, 'relay']]) {
    const sign = observation ? observation[key] : null;
    setCell(cell, sign === null ? null : ON_OFF[sign] || sign);
  }
}

function reasonsOf(view) {
  const {verdict, observation} = view;
  if (verdict === 'unsafe') return observation.reasons.map((reason) => reason.text);
  if (verdict === 'safe') return [];
  return [view.why + ' Take it as unsafe.'];
}

// The verdict with its reasons' names: what is worth saying aloud. Their texts change every second.
let announced = '';
function announce(view, reasons) {
  const names = view.verdict === 'unsafe' ? view.observation.reasons.map((reason) => reason.name) : reasons;
  const key = [view.verdict, ...names].join();
  if (key === announced || document.visibilityState === 'hidden') return;
  announced = key;
  setText(byId('announcement'), [HEADINGS[view.verdict].toLowerCase(), ...reasons].join('. '));
}

function showBanner(view) {
  const {verdict, observation} = view;
  const reasons = reasonsOf(view);
  byId('banner').className = verdict;
  setText(byId('verdict'), HEADINGS[verdict]);
  byId('sign-path').setAttribute('d', SIGNS[verdict]);
  setTexts(byId('reasons'), reasons, 'li');
  byId('reasons').hidden = reasons.length === 0;
  if (verdict === 'unknown') {
    setText(byId('since'), '');
    setText(byId('age'), observation ? 'Last word ' + roughTime(view.silence) + ' ago.' : '');
  } else {
    const lasted = Date.parse(observation.time) - Date.parse(observation.since) + view.silence;
    setText(byId('since'), 'Since ' + timeOfDay(observation.since) + ', for ' + roughTime(Math.max(lasted, 0)) + '.');
    setText(byId('age'), view.readingAge === null ? 'No reading yet.' : 'Reading ' + roughTime(view.readingAge) + ' old.');
  }
  announce(view, reasons);
}

let shown = null;
let origin = '';
function show(view) {
  shown = view;
  const {verdict, observation} = view;
  if (observation) setText(byId('station'), observation.station || 'Orvalis');
  document.title = HEADINGS[verdict] + (observation ? ' · ' + observation.station : '') + ' · Orvalis';
  setText(byId('clock'), timeOfDay(Date.now(), true) + (observation && observation.source === 'demo' ? ' · demo' : ''));
  showBanner(view);
  showValues(observation);
  if (observation) followOrigin(observation.uuid + (observation.source === 'demo'));
  const old = verdict === 'unknown' && observation !== null;
  byId('now').classList.toggle('stale', verdict === 'unknown');
  byId('old').hidden = !old;
  setText(byId('old'), old ? 'Not of now: heard ' + roughTime(view.silence) + ' ago.' : '');
}

function choose(name, choices, current, chosen) {
  for (const input of document.querySelectorAll('input[name=' + name + ']')) {
    input.checked = input.value === current;
    input.addEventListener('change', () => {
      keep(name, input.value);
      chosen(input.value);
    });
  }
}

const HOURS = ['12', '24', '48'];
const CURVES_EVERY_MS = 60_000;
const CURVES_AGAIN_MS = 3_000;
let hours = kept('hours', HOURS);
let history = null;
let curvesTimer = 0;
let curvesRequest = 0;

function showCurves() {
  if (history) drawCurves(byId('curves'), history, {measure, number, timeOfDay});
}

async function loadCurves() {
  clearTimeout(curvesTimer);
  if (document.visibilityState === 'hidden') return;
  const request = ++curvesRequest;
  let again = CURVES_EVERY_MS;
  try {
    const answer = await fetch('/history?points=1200&from=-' + hours * 3600, {cache: 'no-store'});
    if (!answer.ok) throw new Error(String(answer.status));
    const fetched = await answer.json();
    if (request !== curvesRequest) return;
    history = fetched;
    showCurves();
    setText(byId('curves-note'), 'Until ' + timeOfDay(history.to) + (history.source === 'demo' ? ', simulated values' : '') + '.');
  } catch {
    if (request !== curvesRequest) return;
    again = CURVES_AGAIN_MS;
    setText(byId('curves-note'), history ? 'Until ' + timeOfDay(history.to) + '; there is no newer answer.' : 'No answer yet.');
  }
  curvesTimer = setTimeout(loadCurves, again);
}

// Curves of another station, or simulated ones, are not left beside values that are not theirs.
function followOrigin(now) {
  const changed = origin !== '' && origin !== now;
  origin = now;
  if (changed) loadCurves();
}

choose('look', LOOKS, kept('look', LOOKS), (look) => {
  applyLook(look);
});
choose('units', Object.keys(UNITS), units, (chosen) => {
  units = chosen;
  show(shown);
  showCurves();
});
choose('hours', HOURS, hours, (chosen) => {
  hours = chosen;
  loadCurves();
});
addEventListener('visibilitychange', loadCurves);
new ResizeObserver(showCurves).observe(byId('curves'));
follow(show);
loadCurves();
