// Draws the page. A document's texts become text nodes, never markup.

// --- head and headline figures ---

function describeRelease({family, version}) {
  return family || version ? `${visible(family)} ${visible(version)}` : 'no release';
}

function showHead() {
  const title = `${describeRelease(contents.base)} \u2192 ${describeRelease(contents.target)}`;
  byId('title').textContent = title;
  document.title = `${title} \u2013 update report`;
  byId('subtitle').textContent = [
    `Update level ${contents.target.updateLevel}`,
    contents.arch && visible(contents.arch),
    visible(contents.file),
  ].filter(Boolean).join(' \u00b7 ');
}

function showFigures() {
  const figures = [
    ['To fetch', readable(totals.bytesToFetch), exact(totals.bytesToFetch)],
    ['Unpacked', readable(totals.bytesUnpacked), exact(totals.bytesUnpacked)],
    ['Deleted', readable(totals.bytesDeleted), exact(totals.bytesDeleted)],
    ['Packages to extract', totals.packagesToExtract.toLocaleString('en')],
    ['Packages to delete', totals.packagesToDelete.toLocaleString('en')],
    ['Files to delete', totals.filesToDelete.toLocaleString('en')],
  ];
  for (const [term, figure, precisely] of figures) {
    const card = make('div', {}, make('dt', {textContent: term}),
                      make('dd', {className: 'large', textContent: figure}));
    if (precisely && precisely !== figure) {
      card.append(make('dd', {className: 'exact', textContent: precisely}));
    }
    byId('figures').append(card);
  }
  if (components.some((component) => component.products.length > 1)) {
    byId('counting').textContent =
        'A package that several products name counts once in these totals, and in full for each ' +
        'product.';
  }
}

// --- light and dark ---

function setUpTheme() {
  const button = byId('theme');
  const system = matchMedia('(prefers-color-scheme: dark)');
  const isDark = () => (document.documentElement.dataset.theme ||
                        (system.matches ? 'dark' : 'light')) === 'dark';
  const show = () => button.setAttribute('aria-pressed', String(isDark()));
  button.addEventListener('click', () => {
    document.documentElement.dataset.theme = isDark() ? 'light' : 'dark';
    show();
  });
  system.addEventListener('change', show);
  show();
}

// --- bars ---

const MOST_PRODUCTS_WITH_BARS = 12;
// The bytes of a full bar, if a sum is beyond 64 bits.
const LONGEST_BAR = 2 ** 63;

function showBars() {
  const measures = [
    ['To fetch', 'bytesToFetch', '--fetch'],
    ['Unpacked', 'bytesUnpacked', '--unpack'],
    ['Deleted', 'bytesDeleted', '--deleted'],
  ];
  const length = (product, measure) => Math.min(Math.max(magnitudeOf(product[measure]), 0),
                                                LONGEST_BAR);
  const largest = [...products].sort(
      (left, right) => length(right, 'bytesToFetch') - length(left, 'bytesToFetch'))
                      .slice(0, MOST_PRODUCTS_WITH_BARS);
  const longest = Math.max(0, ...largest.flatMap(
      (product) => measures.map(([, measure]) => length(product, measure))));
  byId('bars').className = 'bars';
  for (const product of largest) {
    const table = make('table', {}, make('caption', {className: 'name',
                                                     textContent: nameProduct(product)}));
    const body = table.createTBody();
    for (const [term, measure, color] of measures) {
      const bar = make('span', {aria: {hidden: 'true'}});
      bar.style.width = `${longest > 0 ? 100 * length(product, measure) / longest : 0}%`;
      bar.style.background = `var(${color})`;
      body.append(make('tr', {}, make('th', {scope: 'row', textContent: term}),
                       make('td', {className: 'bar'}, bar),
                       make('td', {className: 'size', title: exact(product[measure]),
                                   textContent: readable(product[measure])})));
    }
    byId('bars').append(table);
  }
  if (products.length === 0) {
    byId('bars').textContent = 'This update has no products.';
  } else if (products.length > largest.length) {
    byId('bars-note').textContent =
        `The ${largest.length} products with the most bytes to fetch. The table below lists all ` +
        `${products.length.toLocaleString('en')}.`;
  }
}

function nameProduct({name, baseCode}) {
  return baseCode === null ? name : `${name} (${baseCode})`;
}

// --- all together ---

setUpTheme();
showHead();
showFigures();
showBars();
byId('tables-note').textContent = contents.doubtfulSizes || '';
const PACKAGES = 2;
const tabs = new Tabs([
  {title: 'Products', rows: products.length, makeTable: makeProductTable},
  {title: 'Components', rows: components.length, makeTable: makeComponentTable},
  {title: 'Packages', rows: packages.length, makeTable: makePackageTable},
  {title: 'Files to delete', rows: totals.filesToDelete, makeTable: makeFileTable},
]);
new Treemap(makeTree(), (row) => tabs.choose(PACKAGES).show(row));
showFindings();
