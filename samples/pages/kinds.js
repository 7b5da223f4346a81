// One function a kind of page. A page may change between two frames (`moments`), and says which
// element's movement is the truth (`anchor`) when it is not the document's.
'use strict';

let moments = [];
let scroller = null;
let theme = {};

function prose(parent, paragraphs, han = random() < 0.2) {
  for (let i = 0; i < paragraphs; ++i) {
    if (random() < 0.2) make(parent, 'h2', '', sentence(han));
    make(parent, 'p', '', paragraph(han));
  }
}
function table(parent, rows, columns, cell) {
  const body = make(parent, 'table');
  for (let r = 0; r < rows; ++r) {
    const row = make(body, 'tr');
    for (let c = 0; c < columns; ++c) make(row, 'td', '', cell(r, c));
  }
  return body;
}
function codeLine() {
  if (random() < 0.15) return '';
  return ' '.repeat(2 * below(5)) + Array.from({length: between(1, 9)}, () => pick(random() < 0.5 ? CODE : WORDS)).join(' ');
}
function code(parent, lines, numbered = random() < 0.6) {
  for (let i = 0; i < lines; ++i)
    make(parent, 'pre', '', (numbered ? String(i + 1).padStart(5) + '  ' : '') + codeLine());
}
function header(parent, style = '') {
  const bar = make(parent, 'div', `background:${theme.bar};color:${theme.ink};${style}`, '', 'top');
  for (const text of ['Overview', 'Reports', 'Teams', words(2), 'Help']) make(bar, 'span', '', text);
  return bar;
}
const main = (style = '') => make(document.body, 'main', style);

const KINDS = {
  prose() { prose(main(), 60); },
  rows() {
    table(main(), 250, 5, (r, c) => [`Order ${10000 + r}`, 'Confirmed', `2026-03-${10 + r % 20}`, 'Standard delivery', `${(r * 37 % 90) + 10}.00`][c]);
  },
  code() { document.body.style.fontFamily = pick(MONO); code(main(), 400); },
  chat() {
    const list = main();
    for (let i = 0; i < 160; ++i) {
      const mine = random() < 0.5;
      make(list, 'div', `background:${mine ? '#3b82f644' : '#8883'};margin-left:${mine ? 'auto' : 0}`, sentence(), 'bubble');
    }
  },
  grid() {
    const grid = make(main(), 'div', 'grid-template-columns:repeat(4,1fr)', '', 'grid');
    for (let i = 0; i < 80; ++i) {
      const card = make(grid, 'div', '', picture(200, between(110, 160)));
      make(card, 'div', 'margin-top:4px', words(3));
    }
  },
  dark() { document.body.style.cssText += ';background:#14161a;color:#d8dade'; theme.bar = '#20242b'; prose(main(), 60); },
  stickyHeader() { header(document.body); prose(main(), 60); },
  translucentFooter() {
    header(document.body, 'opacity:0.9');
    prose(main(), 60);
    make(document.body, 'div', `background:color-mix(in srgb, ${theme.bar} 70%, transparent);`, words(12), 'foot');
  },
  sidebar() {
    const side = make(document.body, 'div', `background:${theme.bar}`, '', 'side');
    for (let i = 0; i < 40; ++i) make(side, 'p', '', words(2));
    prose(main('margin-left:15em'), 60);
  },
  blank() {
    const list = main();
    for (let i = 0; i < 30; ++i) { prose(list, 1); make(list, 'div', `height:${between(200, 700)}px`); }
  },
  textAtTop() { const list = main(); prose(list, 4); make(list, 'div', 'height:4000px'); },
  cards() {
    const list = main();
    for (let i = 0; i < 120; ++i) {
      const card = make(list, 'div', 'margin-bottom:1em', '', 'card');
      make(card, 'h2', 'margin:0 0 0.3em', `Invoice ${4200 + i}`);
      make(card, 'p', '', 'Due within thirty days. Payment by bank transfer or card.');
      make(card, 'span', 'border:1px solid;padding:0.2em 0.8em', 'Open');
    }
  },
  identicalRows() {
    table(main('padding-top:0'), 300, 4, (r, c) => ['Item', 'Available', 'Yes', '1.00'][c]);
  },
  spinner() {
    const list = main();
    prose(list, 60);
    const wheel = make(document.body, 'div', 'position:fixed;right:2em;top:2em;width:60px;height:60px;border:8px solid #8884;border-top-color:#e33;border-radius:50%');
    const caret = make(document.body, 'div', 'position:fixed;left:40%;top:50%;width:2px;height:1.3em;background:currentColor');
    moments = [0, 1].map(i => () => { wheel.style.transform = `rotate(${i * 140}deg)`; caret.style.opacity = i; });
  },
  lazy() {
    const grid = make(main(), 'div', 'grid-template-columns:repeat(3,1fr)', '', 'grid');
    const late = [];
    for (let i = 0; i < 60; ++i) {
      const card = make(grid, 'div', '');
      const frame = make(card, 'div', 'background:#8883;height:150px;overflow:hidden');
      const shown = make(frame, 'div', '', picture(400, 150));
      if (random() < 0.6) late.push(shown);
      make(card, 'p', '', sentence());
    }
    moments = [0, 1].map(i => () => { for (const shown of late) shown.style.visibility = i ? 'visible' : 'hidden'; });
  },
  fixedBackground() {
    make(document.body, 'div', 'position:fixed;inset:0;z-index:-1', picture(1600, 1000));
    const list = main('max-width:50em;margin:auto');
    for (let i = 0; i < 40; ++i) prose(make(list, 'div', `background:${theme.paper};padding:1em;margin-bottom:6em`), 2);
  },
  scrollBar() { document.documentElement.className = 'bar'; prose(main(), 60); },
  sideways() { prose(main('width:130vw'), 80); },
  fractional() { pick([() => prose(main(), 60), () => KINDS.cards(), () => { header(document.body); code(main(), 300); }])(); },
  video() {
    const list = main();
    prose(list, 3);
    const film = make(list, 'div', '', picture(between(400, 900), between(250, 400), 'noise')).firstChild;
    prose(list, 60);
    moments = [0, 1].map(i => () => { seeded(77 + i); noise(film); });
  },
  viewer() {
    document.body.style.background = '#777';
    const list = main('width:46em;margin:auto');
    for (let i = 0; i < 12; ++i) {
      const page = make(list, 'div', 'background:#fff;color:#111;padding:4em;margin-bottom:1em;height:62em;overflow:hidden');
      prose(page, between(2, 6));
    }
  },
  editor() {
    document.body.style.fontFamily = pick(MONO);
    code(main('margin-right:8em'), 400, true);
    const marked = make(document.body, 'div', 'position:fixed;left:0;right:8em;height:1.4em;background:#fd03;mix-blend-mode:multiply');
    const map = make(document.body, 'div', 'position:fixed;right:0;top:0;bottom:0;width:7em;overflow:hidden;background:#8882', picture(100, 3000));
    moments = [0, 1].map(i => () => { marked.style.top = `${20 + 15 * i}em`; map.scrollTop = 20 + 13 * i; });
  },
  terminal() {
    document.body.style.cssText += ';background:#101010;color:#ccc;font-family:' + pick(MONO);
    code(main('padding:0'), 500, false);
    const status = make(document.body, 'pre', 'position:fixed;bottom:0;left:0;right:0;background:#2a4;color:#000', '');
    moments = [0, 1].map(i => () => { status.textContent = ` NORMAL  ${words(3)}   line ${130 + 37 * i}  col ${3 + i} `; });
  },
  letters() {
    const list = main();
    for (const letter of 'ABCDEFGHIJKLMNOPQRSTUVWXYZ') {
      const section = make(list, 'div');
      make(section, 'div', `position:sticky;top:0;background:${theme.bar};padding:0.3em 1em;font-weight:bold`, letter);
      for (let i = 0; i < between(3, 14); ++i) make(section, 'p', 'margin:0.4em 1em', letter + words(between(1, 4)));
    }
  },
  growingChat() {
    const list = main();
    const older = make(list, 'div');
    const newer = make(list, 'div');
    const fill = (box, n) => { for (let i = 0; i < n; ++i) make(box, 'div', 'background:#8883', sentence(), 'bubble'); };
    document.documentElement.style.overflowAnchor = 'none';
    fill(newer, 150);
    scroller = newer;
    moments = [() => {}, () => { seeded(5); fill(older, between(2, 6)); }];
  },
  wideTable() {
    const body = table(main('width:200vw'), 200, 16, (r, c) => c ? words(2) : `Row ${r}`);
    moments = [0, 1].map(i => () => { scrollTo(between(0, 0) + i * 160, scrollY); });
  },
  map() {
    const sheet = make(document.body, 'div', 'position:relative;height:5000px;overflow:hidden;background:#ddd');
    const tiles = [];
    for (let y = 0; y < 20; ++y) for (let x = 0; x < 7; ++x) {
      const tile = make(sheet, 'div', `position:absolute;left:${x * 256}px;top:${y * 256}px`, picture(256, 256));
      if (random() < 0.35) tiles.push(tile);
      for (let i = 0; i < 3; ++i) make(tile, 'div', `position:absolute;left:${below(180)}px;top:${below(240)}px;font-size:11px;color:#000`, words(1));
    }
    moments = [0, 1].map(i => () => tiles.forEach((tile, n) => { tile.style.visibility = (n + i) % 2 ? 'visible' : 'hidden'; }));
  },
  pointer() {
    const body = table(main(), 200, 5, (r, c) => c ? words(2) : `Row ${r}`);
    const mark = make(document.body, 'div', 'position:fixed;left:2em;right:2em;top:40%;height:2.4em;background:#38f3');
    const tip = make(document.body, 'div', `position:fixed;left:45%;top:46%;padding:0.6em 1em;background:#222;color:#fff;border-radius:6px`, '');
    moments = [0, 1].map(i => () => { seeded(90 + i); mark.style.top = `${40 + i}%`; tip.textContent = words(6); });
  },
  parallax() {
    const hero = make(document.body, 'div', 'height:70vh;overflow:hidden;position:relative');
    const layer = make(hero, 'div', '', picture(1500, 900));
    for (let i = 0; i < 10; ++i) make(layer, 'div', `position:absolute;left:${below(900)}px;top:${below(500)}px;font-size:1.6em`, words(2));
    prose(main(), 60);
    const follow = () => { layer.style.transform = `translateY(${Math.round(scrollY / 2)}px)`; };
    moments = [follow, follow];
  },
  still() {
    const list = main();
    prose(list, 60);
    const wheel = make(document.body, 'div', 'position:fixed;right:2em;top:2em;width:60px;height:60px;border:8px solid #8884;border-top-color:#e33;border-radius:50%');
    moments = [0, 1].map(i => () => { wheel.style.transform = `rotate(${i * 140}deg)`; });
  },
  small() { pick([KINDS.prose, KINDS.rows, KINDS.code, KINDS.cards, KINDS.stickyHeader])(); },
  far() { pick([KINDS.prose, KINDS.rows, KINDS.code, KINDS.chat, KINDS.grid])(); },
  tooFar() { pick([KINDS.prose, KINDS.rows, KINDS.code, KINDS.chat])(); },
  replaced() {
    header(document.body);
    const side = make(document.body, 'div', `background:${theme.bar};top:3em`, '', 'side');
    for (let i = 0; i < 20; ++i) make(side, 'p', '', words(2));
    const list = main('margin-left:15em');
    moments = [0, 1].map(i => () => { seeded(900 + i); list.replaceChildren(); prose(list, 50, false); });
  },
  other() {
    moments = [() => { prose(main(), 50); }, () => { document.body.replaceChildren(); seeded(4321); pick([KINDS.cards, KINDS.code, KINDS.grid, KINDS.rows])(); moments = []; }];
  },
};

function build(kind, seed) {
  seeded(seed * 1000 + Object.keys(KINDS).indexOf(kind));
  document.body.replaceChildren();
  moments = [];
  scroller = null;
  document.documentElement.className = '';
  const dark = random() < 0.25;
  theme = dark ? {ink: '#e4e4e4', paper: '#1c1e22', bar: '#2a2d33'} : {ink: '#1d1d1f', paper: pick(['#fff', '#fbfaf7', '#f4f6f8']), bar: pick(['#eef', '#fff', '#e8e8e4'])};
  document.body.style.cssText = `font-family:"${pick(FONTS)}";font-size:${between(12, 18)}px;background:${theme.paper};color:${theme.ink}`;
  KINDS[kind]();
}

let ids = 0;
/// The content that is to be seen and may move: by its identity, which of its rows.
function visible() {
  const result = {};
  for (const element of document.body.querySelectorAll('[data-id]')) {
    if (!element.textContent && element.tagName !== 'CANVAS') continue;
    if (getComputedStyle(element).visibility === 'hidden') continue;
    let stays = false;
    for (let up = element; up && !stays; up = up.parentElement) stays = /fixed|sticky/.test(getComputedStyle(up).position);
    const box = element.getBoundingClientRect();
    const rows = [Math.max(0, -box.top), Math.min(box.height, innerHeight - box.top)];
    if (!stays && rows[1] > rows[0] && box.right > 0 && box.left < innerWidth) result[element.dataset.id] = rows;
  }
  return result;
}

/// Scrolls and lets the page be what it is at that moment.
/// @return where the moving content is, in CSS pixels, and what of it is to be seen
function go(x, y, moment) {
  scrollTo(x, y);
  if (moments[moment]) moments[moment]();
  for (const element of document.body.querySelectorAll('*'))
    if (!element.children.length && !element.dataset.id) element.dataset.id = ++ids;
  const box = (scroller || document.documentElement).getBoundingClientRect();
  return {x: box.left, y: box.top, visible: visible(), limit: document.documentElement.scrollHeight - innerHeight};
}
