// Draws the curves of the history as SVG, each chart with the times of day below it and the conditions on top of all.

const SVG = 'http://www.w3.org/2000/svg';
const LEFT = 44;
const RIGHT = 8;
const HEIGHT = 150;
const BOTTOM = 22;
const TOP = 8;
const HOUR_WIDTH = 40;

const CHARTS = [
  {title: 'Temperatures', kind: 'temperature',
   curves: [['Air', 'ambient_c'], ['Dew point', 'dew_point_c'], ['Sky', 'sky_c'], ['Clear sky', 'clear_sky_c']]},
  {title: 'Sky colder than the air', kind: 'difference', curves: [['Difference', 'difference_c']]},
  {title: 'Wind', kind: 'speed', lowest: 0, curves: [['Wind', 'wind_m_s'], ['Gust', 'wind_gust_m_s']]},
  {title: 'Humidity', kind: 'percent', lowest: 0, highest: 100, curves: [['Humidity', 'humidity_percent']]},
  {title: 'Rain', note: 'more is wetter', kind: 'counts', lowest: 0, curves: [['Rain count', 'rain_counts']]},
  // The sensor's whole scale.
  {title: 'Light', note: 'more is darker', kind: 'counts', lowest: 0, highest: 1023, step: 250,
   curves: [['Light count', 'light_counts']]},
];

// Rows of bands: the height of a band tells its state, not its colour alone.
const ROWS = [
  {title: 'Verdict', bands: [['safe', 'Safe', 0.4], ['unsafe', 'Unsafe', 1]]},
  {title: 'Alarm', bands: [['unit_alarm', 'Unit’s alarm', 1]]},
  {title: 'Rain', bands: [['rain', 'Rain', 1]]},
  {title: 'Sky', bands: [['clear', 'Clear', 0.2], ['partly_cloudy', 'Partly cloudy', 0.55], ['cloudy', 'Cloudy', 1]]},
];
const ROW_HEIGHT = 20;
const BAND_HEIGHT = 14;

function element(name, attributes = {}, text = '') {
  const made = document.createElementNS(SVG, name);
  for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
  if (text) made.textContent = text;
  return made;
}

function html(name, className, text = '') {
  const made = document.createElement(name);
  if (className) made.className = className;
  if (text) made.textContent = text;
  return made;
}

// A round step that divides `span` into about `count` parts.
function roundStep(span, count) {
  const rough = span / count;
  const power = 10 ** Math.floor(Math.log10(rough));
  return [1, 2, 5, 10].map((n) => n * power).find((step) => step >= rough);
}

class Drawing {
  constructor(history, width, tools) {
    this.history = history;
    this.tools = tools;
    this.width = Math.max(width, 200);
    this.from = Date.parse(history.from);
    this.seconds = (Date.parse(history.to) - this.from) / 1000;
  }

  x(seconds) {
    return LEFT + (seconds / this.seconds) * (this.width - LEFT - RIGHT);
  }

  // Whole hours of the day, as many as there is room for.
  hourMarks() {
    const room = (this.width - LEFT - RIGHT) / 46;
    const step = [1, 2, 3, 4, 6, 8, 12].find((hours) => this.seconds / 3600 / hours <= room) || 24;
    const time = new Date(this.from);
    time.setMinutes(0, 0, 0);
    const marks = [];
    for (; time <= this.from + this.seconds * 1000; time.setHours(time.getHours() + 1)) {
      if (time >= this.from && time.getHours() % step === 0) {
        marks.push({x: this.x((time - this.from) / 1000), text: this.tools.timeOfDay(time)});
      }
    }
    return marks;
  }

  addHours(svg, height) {
    let taken = 0;
    for (const mark of this.hourMarks()) {
      svg.append(element('line', {class: 'grid', x1: mark.x, x2: mark.x, y1: TOP, y2: height - BOTTOM}));
      // Within the picture, and clear of the one before.
      const x = Math.min(mark.x, this.width - HOUR_WIDTH / 2);
      if (x - HOUR_WIDTH / 2 < taken) continue;
      svg.append(element('text', {x, y: height - 6, 'text-anchor': 'middle'}, mark.text));
      taken = x + HOUR_WIDTH / 2;
    }
  }

  bands() {
    const height = TOP + ROWS.length * ROW_HEIGHT + BOTTOM;
    const svg = element('svg', {viewBox: `0 0 ${this.width} ${height}`, height, role: 'img'});
    const spoken = [];
    this.addHours(svg, height);
    ROWS.forEach((row, i) => {
      const base = TOP + i * ROW_HEIGHT + BAND_HEIGHT;
      svg.append(element('text', {x: 0, y: base - 2}, row.title));
      svg.append(element('line', {class: 'grid', x1: LEFT, x2: this.width - RIGHT, y1: base, y2: base}));
      for (const [key, name, share] of row.bands) {
        let sum = 0;
        for (const [from, to] of this.history.bands[key] || []) {
          sum += to - from;
          const x = this.x(from);
          const height = BAND_HEIGHT * share;
          svg.append(element('rect', {class: 'band ' + key, x, y: base - height, height, width: Math.max(this.x(to) - x, 1)}));
        }
        spoken.push(name + ' for ' + (sum / 3600).toFixed(1) + ' hours');
      }
    });
    svg.setAttribute('aria-label', 'Conditions: ' + spoken.join(', '));
    return svg;
  }

  chart(chart) {
    const {measure, number} = this.tools;
    const {sign, convert, decimals} = measure(chart.kind);
    const curves = chart.curves.map(([name, key]) => ({
      name,
      points: (this.history.curves[key] || []).map((point) => point && [point[0], convert(point[1])]),
    }));
    const values = curves.flatMap((curve) => curve.points).filter((point) => point && point[0] >= 0).map((point) => point[1]);
    let lowest = Math.min(...[chart.lowest].filter((v) => v !== undefined), ...values.slice(0, 1));
    let highest = Math.max(...[chart.highest].filter((v) => v !== undefined), ...values.slice(0, 1));
    for (const value of values) {
      lowest = Math.min(lowest, value);
      highest = Math.max(highest, value);
    }
    const figure = html('figure', 'chart');
    const caption = html('figcaption', '');
    caption.append(html('h3', '', chart.title + ', ' + (chart.note || sign)));
    figure.append(caption);
    if (values.length === 0) {
      figure.append(html('p', 'empty', 'Nothing is known for this time.'));
      return figure;
    }
    if (highest - lowest < 1) highest = lowest + 1;
    const step = chart.step || roundStep(highest - lowest, 4);
    if (!chart.step) {
      lowest = Math.floor(lowest / step) * step;
      highest = Math.ceil(highest / step) * step;
    }
    const y = (value) => TOP + ((highest - value) / (highest - lowest)) * (HEIGHT - TOP - BOTTOM);

    const svg = element('svg', {viewBox: `0 0 ${this.width} ${HEIGHT}`, height: HEIGHT, role: 'img', tabindex: 0});
    this.addHours(svg, HEIGHT);
    for (let mark = lowest; mark <= highest + step / 1000; mark += step) {
      svg.append(element('line', {class: 'grid', x1: LEFT, x2: this.width - RIGHT, y1: y(mark), y2: y(mark)}));
      const text = mark.toFixed(step < 1 ? 1 : 0).replace('-', '−');
      svg.append(element('text', {x: LEFT - 6, y: y(mark) + 4, 'text-anchor': 'end'}, text));
    }
    const legend = html('ul', 'legend');
    const spoken = [];
    const cells = curves.map((curve, i) => {
      let path = '';
      let pen = 'M';
      for (const point of curve.points) {
        if (!point) {
          pen = 'M';
          continue;
        }
        const x = Math.min(Math.max(this.x(point[0]), LEFT), this.width - RIGHT);
        path += pen + x.toFixed(1) + ' ' + y(point[1]).toFixed(1);
        pen = 'L';
      }
      // The first one is on top.
      svg.insertBefore(element('path', {class: 'curve curve' + i, d: path}), svg.querySelector('.curve'));
      const item = html('li', '');
      const key = element('svg', {viewBox: '0 0 28 8', width: 28, height: 8, 'aria-hidden': 'true'});
      key.append(element('path', {class: 'curve curve' + i, d: 'M0 4L28 4'}));
      const cell = html('span', '');
      item.append(key, html('span', '', curve.name), cell);
      legend.append(item);
      const known = curve.points.filter((point) => point).map((point) => point[1]);
      if (known.length > 0) {
        const text = (value) => value.toFixed(decimals).replace('-', '−');
        const low = known.reduce((a, b) => Math.min(a, b));
        const high = known.reduce((a, b) => Math.max(a, b));
        spoken.push(`${curve.name} ${text(low)} to ${text(high)}, last ${text(known[known.length - 1])} ${sign}`.trim());
      }
      return cell;
    });
    svg.setAttribute('aria-label', chart.title + ': ' + spoken.join('; '));
    caption.append(legend);
    figure.append(svg);
    this.addCursor(svg, curves, cells, (value) => value.toFixed(decimals).replace('-', '−'), legend);
    return figure;
  }

  // A line that follows the pointer or the arrow keys, with the values there in the legend.
  addCursor(svg, curves, cells, text, legend) {
    const line = element('line', {class: 'cursor', y1: TOP, y2: HEIGHT - BOTTOM, visibility: 'hidden'});
    const time = html('li', 'time');
    svg.append(line);
    legend.append(time);
    let at = this.seconds;
    const show = (seconds) => {
      at = Math.min(Math.max(seconds, 0), this.seconds);
      const x = this.x(at);
      line.setAttribute('x1', x);
      line.setAttribute('x2', x);
      line.setAttribute('visibility', 'visible');
      time.textContent = this.tools.timeOfDay(this.from + at * 1000);
      curves.forEach((curve, i) => {
        const near = this.nearest(curve.points, at);
        cells[i].textContent = near ? text(near[1]) : '–';
      });
    };
    const hide = () => {
      line.setAttribute('visibility', 'hidden');
      time.textContent = '';
      for (const cell of cells) cell.textContent = '';
    };
    svg.addEventListener('pointermove', (event) => {
      const box = svg.getBoundingClientRect();
      const x = ((event.clientX - box.left) / box.width) * this.width;
      show(((x - LEFT) / (this.width - LEFT - RIGHT)) * this.seconds);
    });
    svg.addEventListener('pointerleave', hide);
    svg.addEventListener('blur', hide);
    svg.addEventListener('keydown', (event) => {
      const steps = {ArrowLeft: -1, ArrowRight: 1, PageUp: -8, PageDown: 8}[event.key];
      if (event.key === 'Escape') hide();
      if (steps === undefined) return;
      event.preventDefault();
      show(at + (steps * this.seconds) / 96);
    });
  }

  // The point nearest to a time, if it is near enough to be of it.
  nearest(points, seconds) {
    const reach = Math.max(this.seconds / 150, 60);
    let best = null;
    for (const point of points) {
      if (!point || Math.abs(point[0] - seconds) > reach) continue;
      if (!best || Math.abs(point[0] - seconds) < Math.abs(best[0] - seconds)) best = point;
    }
    return best;
  }
}

// Fills `place` with the charts of `history`. `tools` are the functions measure, number and timeOfDay of the page.
export function drawCurves(place, history, tools) {
  // A chart that is being read with the keyboard stays as it is, unless its place has another size.
  const charts = () => [...place.querySelectorAll('svg[tabindex]')];
  const read = charts().indexOf(document.activeElement);
  if (read >= 0 && place.dataset.width === String(place.clientWidth)) return;
  place.dataset.width = place.clientWidth;
  const width = place.clientWidth >= 720 ? (place.clientWidth - 24) / 2 : place.clientWidth;
  const strip = new Drawing(history, place.clientWidth, tools).bands();
  const figure = html('figure', 'chart wide');
  const caption = html('figcaption', '');
  caption.append(html('h3', '', 'Conditions'));
  figure.append(caption, strip);
  const drawing = new Drawing(history, Math.floor(width), tools);
  place.replaceChildren(figure, ...CHARTS.map((chart) => drawing.chart(chart)));
  if (read >= 0) charts()[read].focus({preventScroll: true});
}
