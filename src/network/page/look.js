// Before anything is drawn, so that a dark dome never sees a white page.
'use strict';

const LOOKS = ['auto', 'light', 'dark', 'red'];

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
  document.documentElement.dataset.look = look === 'auto' ? (dark ? 'dark' : 'light') : look;
}

applyLook(kept('look', LOOKS));
matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => applyLook(kept('look', LOOKS)));
