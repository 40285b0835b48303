// The treemap of the bytes to fetch, with boxes in proportion to the bytes drawn.

const LEAST_INNER_AREA = 160;  // square pixels
const HEAD_HEIGHT = 20;        // of a box: the top of .inner
// Multiples of this angle in degrees never repeat a hue.
const GOLDEN_ANGLE = 137.508;
const FIRST_HUE = 210;
const MOST_PARTS_IN_WORDS = 5;

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
    this.host.addEventListener('pointerover',
                               (event) => this.showStatus(this.nodeOf(event.target)));
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

  /** Opens a part; shows a package in the table. */
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

  /** Goes back to the first `length` steps of the path. */
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
      ArrowLeft: () => this.neighbor(here, -1, 0),
      ArrowRight: () => this.neighbor(here, 1, 0),
      ArrowUp: () => this.neighbor(here, 0, -1),
      ArrowDown: () => this.neighbor(here, 0, 1),
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

  /** The nearest box in a direction, or the same box if there is none. */
  neighbor(index, right, down) {
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

  // Each product and component has a hue, which its packages share.
  hueOf(node, index) {
    return node.leaf || node.kind === 'bundle'
        ? this.current.hue
        : Math.round(FIRST_HUE + index * GOLDEN_ANGLE) % 360;
  }

  // Sketches the contents of a box.
  drawInner(box, node, width, height) {
    const parts = node.parts();
    if (parts.length < 2 || width < 20 || height < 20) {
      return;
    }
    const scale = width * height / node.weight;
    const most = parts.findIndex((part) => part.weight * scale < LEAST_INNER_AREA);
    const shown = most < 0 ? parts : parts.slice(0, most);
    // The others leave a gap of their size.
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

  /** Describes the picture for those who cannot see it. */
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
