// How numbers and names are told, and how elements are made.

const UNITS = ['bytes', 'KiB', 'MiB', 'GiB', 'TiB', 'PiB', 'EiB'];
const TOO_LARGE = 'beyond 64 bits';

/** Whether a sum is told by the bound of 64 bits that it passes. */
function isBeyond(bytes) {
  return typeof bytes === 'string' && /^[<>]/.test(bytes);
}

/** Bytes to compare: a sum beyond 64 bits is infinite, below zero if it passes the lower bound. */
function magnitudeOf(bytes) {
  if (isBeyond(bytes)) {
    return bytes.startsWith('<') ? -Infinity : Infinity;
  }
  return Number(bytes);
}

/** Tells bytes for people: "917 bytes", "1.5 MiB". */
function readable(bytes) {
  if (isBeyond(bytes)) {
    return TOO_LARGE;
  }
  let magnitude = Number(bytes);
  if (Math.abs(magnitude) < 1024) {
    return counted(magnitude, 'byte');
  }
  let unit = 0;
  while (Math.abs(magnitude) >= 1023.95) {
    magnitude /= 1024;
    ++unit;
  }
  return `${magnitude.toFixed(1)} ${UNITS[unit]}`;
}

/** Tells bytes to the last one: "1,572,864 bytes". */
function exact(bytes) {
  return isBeyond(bytes) ? TOO_LARGE : counted(BigInt(bytes), 'byte');
}

// What stands for a size that does not fit into 64 bits.
const TRUNCATED = -(2 ** 63);

/** Why a size of a package is none that it can have; nothing if it may be. */
function doubtOf(bytes) {
  if (bytes === TRUNCATED) {
    return `A size that does not fit into 64 bits: it was taken for ${BigInt(TRUNCATED)}.`;
  }
  return bytes < 0 ? 'A size below zero.' : '';
}

/** Tells a number of things: "1 package", "1,200 packages". */
function counted(number, thing) {
  return `${number.toLocaleString('en')} ${thing}${number == 1 || number == -1 ? '' : 's'}`;
}

/** Tells a share of a whole: "12%", "under 1%". */
function share(part, whole) {
  const percent = whole > 0 ? 100 * part / whole : 0;
  return percent > 0 && percent < 1 ? 'under 1%' : `${Math.round(percent)}%`;
}

/** Makes an element. `properties` are set on it, those of `aria` and of `data` as attributes. */
function make(tag, {aria = {}, data = {}, ...properties} = {}, ...children) {
  const element = Object.assign(document.createElement(tag), properties);
  for (const [name, value] of Object.entries(aria)) {
    element.setAttribute(`aria-${name}`, value);
  }
  Object.assign(element.dataset, data);
  element.append(...children);
  return element;
}

function byId(id) {
  return document.getElementById(id);
}

/** A definition list's term and what it says. */
function defined(term, ...descriptions) {
  return [make('dt', {textContent: term}),
          ...descriptions.map((text) => make('dd', {textContent: text}))];
}
