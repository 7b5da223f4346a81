// Text, colours and pictures out of a seed, so that a page is the same at every visit.
'use strict';

let state = 1;
function seeded(seed) { state = (seed * 2654435761) >>> 0 || 1; }
function random() {
  state = (state + 0x6D2B79F5) >>> 0;
  let t = Math.imul(state ^ (state >>> 15), 1 | state);
  t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
  return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
}
const below = n => Math.floor(random() * n);
const between = (a, b) => a + below(b - a + 1);
const pick = list => list[below(list.length)];

const WORDS = ('the of and to in is that for it as was with be by on not he his but at are this have from or had an ' +
  'they which one you were all her she there would their we him been has when who will no more if out so up said what ' +
  'its about than into them can only other time new some could these two may first then do any like my now over such ' +
  'our man me even most made after also did many off before must well back through years much where your way down ' +
  'should because long each just state people those too Mr how little good world make very year still see own work ' +
  'men day get here old between both life being under three never know same last another while us might great go come ' +
  'since against right came take used himself few house American use place during without high again home around small ' +
  'however found Mrs thought went say part general once upon school every').split(' ');
const HAN = '的一是不了人我在有他这为之大来以个中上们到说国和地也子时道出而要于就下得可你年生自会那后能对着事其里所去行过家十用发天如然作方成者多日都三小军二无同么经法当起与好看学进种将还分此心前面又定见只主没公从';
const CODE = 'const let return if else for while function size_t auto index value buffer result std::move push_back true false nullptr count += == != < > () { } [i] ; // TODO'.split(' ');
const FONTS = ['Inter', 'DejaVu Sans', 'Noto Sans', 'Noto Serif', 'DejaVu Serif', 'Noto Sans Display'];
const MONO = ['DejaVu Sans Mono', 'Noto Sans Mono'];

const words = n => Array.from({length: n}, () => pick(WORDS)).join(' ');
function sentence(han = false) {
  if (han) return Array.from({length: between(10, 40)}, () => pick([...HAN])).join('') + '。';
  const text = words(between(5, 18));
  return text[0].toUpperCase() + text.slice(1) + '.';
}
const paragraph = han => Array.from({length: between(2, 7)}, () => sentence(han)).join(' ');
const color = (l = between(30, 80), s = between(20, 70)) => `hsl(${below(360)} ${s}% ${l}%)`;

/// A picture of soft shapes or of noise, as an element.
function picture(width, height, kind = 'shapes') {
  const canvas = document.createElement('canvas');
  canvas.width = width; canvas.height = height;
  canvas.style.cssText = `width:${width}px;height:${height}px;display:block`;
  const g = canvas.getContext('2d');
  if (kind === 'noise') { noise(canvas); return canvas; }
  const fade = g.createLinearGradient(0, 0, width, height);
  fade.addColorStop(0, color()); fade.addColorStop(1, color());
  g.fillStyle = fade; g.fillRect(0, 0, width, height);
  for (let i = 0; i < 12; ++i) {
    g.globalAlpha = 0.5; g.fillStyle = color();
    g.beginPath(); g.arc(below(width), below(height), between(5, Math.max(6, height / 3 | 0)), 0, 7); g.fill();
  }
  return canvas;
}
function noise(canvas) {
  const g = canvas.getContext('2d');
  const data = g.createImageData(canvas.width, canvas.height);
  for (let i = 0; i < data.data.length; i += 4) {
    data.data[i] = below(256); data.data[i + 1] = below(256); data.data[i + 2] = below(256); data.data[i + 3] = 255;
  }
  g.putImageData(data, 0, 0);
}

function make(parent, tag, style = '', content = '', className = '') {
  const element = document.createElement(tag);
  element.style.cssText = style;
  if (content instanceof Node) element.append(content); else element.textContent = content;
  if (className) element.className = className;
  parent.append(element);
  return element;
}
