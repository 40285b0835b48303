// The picture of what is fetched: boxes in boxes, each as large as its share.

// Boxes smaller than this many square pixels are put into one together.
const LEAST_AREA = 260;
const LEAST_INNER_AREA = 160;
const HEAD_HEIGHT = 20;
// Hues in steps of this angle never come back to where one was.
const GOLDEN_ANGLE = 137.508;
const FIRST_HUE = 210;
const MOST_BUNDLES = 100;
const MOST_PARTS_IN_WORDS = 5;

/**
 * Divides a rectangle into one for each weight, of proportional area and with sides as alike as
 * slices allow, best if weights descend. They are above zero. Returns [x, y, width, height] of
 * each.
 */
function squarify(weights, width, height) {
  const rectangles = [];
  let [x, y] = [0, 0];
  const scale = width * height / weights.reduce((sum, weight) => sum + weight, 0);
  for (let start = 0; start < weights.length;) {
    const side = Math.min(width, height);
    let area = 0;
    let largest = 0;
    let smallest = Infinity;
    let worst = Infinity;
    let end = start;
    for (; end < weights.length; ++end) {
      const next = weights[end] * scale;
      const grown = area + next;
      largest = Math.max(largest, next);
      smallest = Math.min(smallest, next);
      const ratio = Math.max(side * side * largest / (grown * grown),
                             grown * grown / (side * side * smallest));
      if (ratio > worst) {
        break;
      }
      worst = ratio;
      area = grown;
    }
    const thickness = area / side;
    let along = 0;
    for (; start < end; ++start) {
      const length = weights[start] * scale / thickness;
      rectangles.push(width >= height ? [x, y + along, thickness, length]
                                      : [x + along, y, length, thickness]);
      along += length;
    }
    if (width >= height) {
      x += thickness;
      width = Math.max(width - thickness, 0);
    } else {
      y += thickness;
      height = Math.max(height - thickness, 0);
    }
  }
  return rectangles;
}

/** Puts an element into a rectangle of an area, as shares of it, so that it follows its size. */
function setPlace(element, [x, y, width, height], areaWidth, areaHeight) {
  Object.assign(element.style, {
    left: `${100 * x / areaWidth}%`,
    top: `${100 * y / areaHeight}%`,
    width: `${100 * width / areaWidth}%`,
    height: `${100 * height / areaHeight}%`,
  });
}

// Of a node: what it is called; `figure`, the bytes that the data tell of it; `weight`, the bytes
// that are drawn of it; `size`, how many parts it has; and its parts that weigh something, made
// when they are asked for, the heaviest first. `leaf` is the row of a package.
function makeNode({listParts = () => [], ...properties}) {
  let parts = null;
  return {
    hue: FIRST_HUE,
    ...properties,
    parts() {
      parts = parts || listParts().filter((part) => part.weight > 0)
                          .sort((left, right) => right.weight - left.weight);
      return parts;
    },
  };
}

function weigh(nodes) {
  return nodes.reduce((sum, node) => sum + node.weight, 0);
}

function weightOf(row) {
  return Math.max(row.fetch, 0);
}

function makePackageNode(row) {
  return makeNode({name: row.name, kind: 'package', figure: row.fetch, weight: weightOf(row),
                   leaf: row});
}

/** A component of which `rows` are drawn. */
function makeComponentNode({name, bytesToFetch, extracted}, rows) {
  return makeNode({
    name,
    kind: 'component',
    figure: bytesToFetch,
    weight: rows.reduce((sum, row) => sum + weightOf(row), 0),
    size: extracted.length,
    listParts: () => rows.map(makePackageNode),
  });
}

/** Of each component, the rows that another one extracts, too. */
function listSharedRows() {
  const extractions = new Map();
  for (const row of components.flatMap(({extracted}) => extracted)) {
    extractions.set(row, (extractions.get(row) || 0) + 1);
  }
  return components.map(({extracted}) => extracted.filter((row) => extractions.get(row) > 1));
}

/** What is drawn: a package once in each product, in the first component that has it. */
function makeTree() {
  const whole = components.map((component) => makeComponentNode(component, component.extracted));
  const shared = listSharedRows();
  const productNodes = products.map((product) => {
    const drawn = new Set();
    const named = product.componentsToExtract.map((index) => {
      const repeated = new Set(shared[index].filter((row) => drawn.has(row)));
      shared[index].forEach((row) => drawn.add(row));
      const {extracted} = components[index];
      return repeated.size === 0
          ? whole[index]
          : makeComponentNode(components[index], extracted.filter((row) => !repeated.has(row)));
    });
    return makeNode({name: product.name, kind: 'product', figure: product.bytesToFetch,
                     weight: weigh(named), size: named.length, listParts: () => named});
  });
  return makeNode({name: 'All products', kind: 'update', figure: totals.bytesToFetch,
                   weight: weigh(productNodes), listParts: () => productNodes});
}

/** One node for several, which are too small to be drawn each. */
function bundle(nodes, name) {
  const weight = weigh(nodes);
  return makeNode({name, kind: 'bundle', figure: weight, weight, listParts: () => nodes});
}

/** The parts that are drawn in an area: the heaviest, and one for all that are too small. */
function partsInArea(node, area) {
  const parts = node.parts();
  const least = node.weight * LEAST_AREA / area;
  const large = parts.findIndex((part) => part.weight < least);
  if (large < 0 || parts.length - large < 2) {
    return parts;
  }
  if (large > 0) {
    const small = parts.slice(large);
    return [...parts.slice(0, large), bundle(small, `${counted(small.length, 'smaller item')}`)];
  }
  // None is large enough: bundles of equally many are.
  const size = Math.ceil(parts.length / MOST_BUNDLES);
  const bundles = [];
  for (let start = 0; start < parts.length; start += size) {
    const bundled = parts.slice(start, start + size);
    bundles.push(bundled.length === 1
        ? bundled[0]
        : bundle(bundled, `${bundled[0].name} and ${counted(bundled.length - 1, 'other')}`));
  }
  return bundles;
}

/** The bytes drawn and, where they differ, the bytes to fetch. */
function describeBytes({figure, weight}) {
  const toFetch = `${readable(figure)} to fetch`;
  return readable(weight) === readable(figure) ? toFetch : `${readable(weight)} drawn (${toFetch})`;
}

class Treemap {
  constructor(root, showPackage) {
    this.host = byId('treemap');
    this.status = byId('treemap-status');
    this.path = [root];
    this.showPackage = showPackage;
    this.host.addEventListener('keydown', (event) => this.onKey(event));
    this.host.addEventListener('focusin', (event) => this.showStatus(this.nodeOf(event.target)));
    this.host.addEventListener('pointerover', (event) => this.showStatus(this.nodeOf(event.target)));
    this.host.addEventListener('pointerleave',
                               () => this.showStatus(this.nodeOf(document.activeElement)));
    this.host.addEventListener('click', (event) => this.enter(this.nodeOf(event.target)));
    new ResizeObserver(() => {
      const focused = this.boxes.indexOf(document.activeElement);
      this.draw();
      this.focus(Math.min(focused, this.boxes.length - 1));
    }).observe(this.host);
    this.draw();
  }

  get current() {
    return this.path[this.path.length - 1];
  }

  nodeOf(element) {
    const box = element && element.closest('.box');
    return box ? this.nodes.get(box) : undefined;
  }

  /** Looks into a part; a package is shown in the table. */
  enter(node) {
    if (!node) {
      return;
    }
    if (node.leaf) {
      this.showPackage(node.leaf);
      return;
    }
    this.path.push(node);
    this.draw();
    this.focus(0);
  }

  /** Goes back until the path has `length` steps. */
  leaveTo(length) {
    if (length < 1 || length >= this.path.length) {
      return;
    }
    const left = this.path[length];
    this.path.length = length;
    this.draw();
    const place = this.boxes.findIndex((box) => this.nodes.get(box) === left);
    this.focus(Math.max(place, 0));
  }

  focus(index) {
    const box = this.boxes[index];
    if (box) {
      this.boxes.forEach((other) => { other.tabIndex = other === box ? 0 : -1; });
      box.focus();
    }
  }

  onKey(event) {
    const here = this.boxes.indexOf(document.activeElement);
    const moves = {
      ArrowLeft: () => this.neighbour(here, -1, 0),
      ArrowRight: () => this.neighbour(here, 1, 0),
      ArrowUp: () => this.neighbour(here, 0, -1),
      ArrowDown: () => this.neighbour(here, 0, 1),
      Home: () => 0,
      End: () => this.boxes.length - 1,
    };
    if (moves[event.key]) {
      event.preventDefault();
      this.focus(moves[event.key]());
    } else if (event.key === 'Escape' && this.path.length > 1) {
      event.preventDefault();
      this.leaveTo(this.path.length - 1);
    }
  }

  /** The nearest box in one direction, or the same one if there is none. */
  neighbour(index, right, down) {
    const middle = (box) => [box.offsetLeft + box.offsetWidth / 2,
                             box.offsetTop + box.offsetHeight / 2];
    const [x, y] = middle(this.boxes[index]);
    let best = index;
    let least = Infinity;
    this.boxes.forEach((box, other) => {
      const [otherX, otherY] = middle(box);
      const ahead = (otherX - x) * right + (otherY - y) * down;
      const aside = Math.abs((otherX - x) * down) + Math.abs((otherY - y) * right);
      if (ahead > 0.5 && ahead + 2 * aside < least) {
        least = ahead + 2 * aside;
        best = other;
      }
    });
    return best;
  }

  /** Describes a box, for its label and for the line below the picture. */
  describe(node) {
    const {weight} = this.current;
    const parts = {product: 'component', component: 'package'}[node.kind];
    const within = parts ? `, ${counted(node.size, parts)}` : '';
    return `${node.name}: ${describeBytes(node)}, ${share(node.weight, weight)} of ` +
        `${readable(weight)}${within}`;
  }

  showStatus(node) {
    this.status.textContent =
        node ? this.describe(node) : `${this.current.name}: ${describeBytes(this.current)}`;
  }

  draw() {
    const width = this.host.clientWidth;
    const height = this.host.clientHeight;
    this.boxes = [];
    this.nodes = new Map();
    this.drawPath();
    const isEmpty = !(this.current.weight > 0);
    this.host.classList.toggle('empty', isEmpty);
    if (isEmpty) {
      this.host.textContent = totals.packagesToExtract === 0
          ? 'There is nothing to fetch.'
          : 'No package to extract has a size above zero.';
    } else if (width > 0 && height > 0) {
      this.host.replaceChildren(...this.drawBoxes(width, height));
    }
    this.host.setAttribute('aria-label', `Bytes to fetch: ${this.current.name}`);
    byId('treemap-text').textContent = this.alternative();
    this.showStatus(undefined);
  }

  drawBoxes(width, height) {
    const parts = partsInArea(this.current, width * height);
    const places = squarify(parts.map((part) => part.weight), width, height);
    parts.forEach((part, index) => {
      const box = this.drawBox(part, index, places[index]);
      setPlace(box, places[index], width, height);
      this.boxes.push(box);
      this.nodes.set(box, part);
    });
    return this.boxes;
  }

  drawBox(node, index, [, , width, height]) {
    const box = make('button', {
      type: 'button',
      className: node.kind === 'bundle' ? 'box bundle' : 'box',
      tabIndex: index === 0 ? 0 : -1,
      aria: {label: this.describe(node)},
    });
    node.hue = this.hueOf(node, index);
    box.style.setProperty('--hue', node.hue);
    if (width > 40 && height > 18) {
      box.append(make('span', {className: 'label'}, make('b', {textContent: node.name}),
                      ` ${readable(node.weight)}`));
    }
    if (node.kind !== 'bundle') {
      this.drawInner(box, node, width - 6, height - HEAD_HEIGHT - 5);
    }
    return box;
  }

  // What can be looked into has a hue of its own, of which its packages then are.
  hueOf(node, index) {
    return node.leaf || node.kind === 'bundle'
        ? this.current.hue
        : Math.round(FIRST_HUE + index * GOLDEN_ANGLE) % 360;
  }

  // What a box holds is only hinted at: it can be looked into.
  drawInner(box, node, width, height) {
    const parts = node.parts();
    if (parts.length < 2 || width < 20 || height < 20) {
      return;
    }
    const scale = width * height / node.weight;
    const most = parts.findIndex((part) => part.weight * scale < LEAST_INNER_AREA);
    const shown = most < 0 ? parts : parts.slice(0, most);
    // The others get a place of their weight and no box.
    const others = {weight: weigh(parts) - weigh(shown)};
    const drawn = others.weight > 0 ? [...shown, others] : shown;
    const places = squarify(drawn.map((part) => part.weight), width, height);
    const inner = make('span', {className: 'inner', aria: {hidden: 'true'}});
    shown.forEach((part, index) => {
      const [, , innerWidth, innerHeight] = places[index];
      const hint = make('i', {
        textContent: innerWidth > 36 && innerHeight > 14 ? part.name : '',
      });
      setPlace(hint, places[index], width, height);
      inner.append(hint);
    });
    box.append(inner);
  }

  drawPath() {
    const steps = this.path.map((node, index) => {
      if (node === this.current) {
        return make('span', {className: 'name', textContent: node.name,
                             aria: {current: 'location'}});
      }
      const step = make('button', {type: 'button', className: 'name', textContent: node.name});
      step.addEventListener('click', () => this.leaveTo(index + 1));
      return step;
    });
    byId('treemap-path').replaceChildren(
        ...steps.flatMap((step, index) => index === 0 ? [step] : ['\u203a', step]));
  }

  /** The picture in words. */
  alternative() {
    const {weight} = this.current;
    const parts = this.current.parts();
    if (parts.length === 0) {
      return '';
    }
    const largest = parts.slice(0, MOST_PARTS_IN_WORDS).map(
        (part) => `${part.name} ${readable(part.weight)} (${share(part.weight, weight)})`);
    const others = parts.length - largest.length;
    const more = others > 0 ? ` and ${counted(others, 'other')}` : '';
    return `Largest of ${readable(weight)} drawn: ${largest.join(', ')}${more}. ` +
        'The tables below list everything.';
  }
}
