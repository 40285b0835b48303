// What the treemap draws: products, their components, the packages of those.

// Boxes below this area in square pixels are drawn as one.
const LEAST_AREA = 260;
const MOST_BUNDLES = 100;

/**
 * A node has a name, a kind, `figure`, the bytes to fetch, `weight`, the bytes drawn, and `size`,
 * the number of its parts. parts() returns those with a weight, heaviest first, and makes them at
 * the first call. A package's node has its row in `leaf`.
 */
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

/** A component, drawn as `rows`. */
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

/** For each component, the rows that another component also extracts. */
function listSharedRows() {
  const extractions = new Map();
  for (const row of components.flatMap(({extracted}) => extracted)) {
    extractions.set(row, (extractions.get(row) || 0) + 1);
  }
  return components.map(({extracted}) => extracted.filter((row) => extractions.get(row) > 1));
}

/** The whole tree: each product draws a package once, in the first component that contains it. */
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

/** One node for several that are too small to draw. */
function bundle(nodes, name) {
  const weight = weigh(nodes);
  return makeNode({name, kind: 'bundle', figure: weight, weight, listParts: () => nodes});
}

/** The parts to draw in an area of square pixels: the heaviest, and one for all the small ones. */
function partsInArea(node, area) {
  const parts = node.parts();
  const least = node.weight * LEAST_AREA / area;
  const large = parts.findIndex((part) => part.weight < least);
  if (large < 0 || parts.length - large < 2) {
    return parts;
  }
  if (large > 0) {
    const small = parts.slice(large);
    return [...parts.slice(0, large), bundle(small, counted(small.length, 'smaller item'))];
  }
  // None is large enough: draw bundles of equal numbers.
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
