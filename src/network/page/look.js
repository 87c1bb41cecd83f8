// Before anything is drawn, so that a dark dome never sees a white page.
'use strict';

const LOOKS = ['auto', 'light', 'dark', 'red'];
// What a phone draws around the page.
const GROUNDS = {light: '#f6f7f8', dark: '#0e1114', red: '#000000'};

// What the visitor chose last. A browser may refuse to keep it.
function kept(name, choices) {
  try {
    const value = localStorage.getItem('orvalis-' + name);
    return choices.includes(value) ? value : choices[0];
  } catch {
    return choices[0];
  }
}

function keep(name, value) {
  try {
    localStorage.setItem('orvalis-' + name, value);
  } catch {
    // It holds until the page is left.
  }
}

function applyLook(look) {
  const dark = matchMedia('(prefers-color-scheme: dark)').matches;
  const shown = look === 'auto' ? (dark ? 'dark' : 'light') : look;
  document.documentElement.dataset.look = shown;
  document.querySelector('meta[name=theme-color]').content = GROUNDS[shown];
}

applyLook(kept('look', LOOKS));
matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => applyLook(kept('look', LOOKS)));
