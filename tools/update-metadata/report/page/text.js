// Text of numbers, and new elements.

const UNITS = ['bytes', 'KiB', 'MiB', 'GiB', 'TiB', 'PiB', 'EiB'];
const TOO_LARGE = 'beyond 64 bits';

/** Whether a sum is given as the 64-bit bound that it exceeds. */
function isBeyond(bytes) {
  return typeof bytes === 'string' && /^[<>]/.test(bytes);
}

/** Bytes as a number to compare: a sum beyond 64 bits is infinite, with its sign. */
function magnitudeOf(bytes) {
  if (isBeyond(bytes)) {
    return bytes.startsWith('<') ? -Infinity : Infinity;
  }
  return Number(bytes);
}

/** Bytes for people: "917 bytes", "1.5 MiB". */
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

/** Bytes to the last one: "1,572,864 bytes". */
function exact(bytes) {
  return isBeyond(bytes) ? TOO_LARGE : counted(BigInt(bytes), 'byte');
}

// What the library makes of a size that does not fit into 64 bits.
const TRUNCATED = -(2 ** 63);

/** Why no package can have this size; empty if one can. */
function doubtOf(bytes) {
  if (bytes === TRUNCATED) {
    return `A size that does not fit into 64 bits, read as ${BigInt(TRUNCATED)}.`;
  }
  return bytes < 0 ? 'A negative size.' : '';
}

/** A number of things: "1 package", "1,200 packages". */
function counted(number, thing) {
  return `${number.toLocaleString('en')} ${thing}${number == 1 || number == -1 ? '' : 's'}`;
}

/** A share of a whole: "12%", "under 1%". */
function share(part, whole) {
  const percent = whole > 0 ? 100 * part / whole : 0;
  return percent > 0 && percent < 1 ? 'under 1%' : `${Math.round(percent)}%`;
}

/** Makes an element with these properties; `aria` and `data` become attributes. */
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

/** A term of a definition list and its descriptions. */
function defined(term, ...descriptions) {
  return [make('dt', {textContent: term}),
          ...descriptions.map((text) => make('dd', {textContent: text}))];
}
