// Draws the page. All of a document's texts reach it as text nodes and never as markup.

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
// What the length of a bar stands for at most: a sum beyond 64 bits is drawn as this.
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
    for (const [term, measure, colour] of measures) {
      const bar = make('span', {aria: {hidden: 'true'}});
      bar.style.width = `${longest > 0 ? 100 * length(product, measure) / longest : 0}%`;
      bar.style.background = `var(${colour})`;
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

// --- which tables there are ---

/** A column of sizes; null is a size that there is none. */
function sizeColumn(title, get) {
  return {
    title,
    className: 'number',
    width: '9rem',
    value: (row) => {
      const bytes = get(row);
      return bytes === null ? -Infinity : magnitudeOf(bytes);
    },
    text: (row) => {
      const bytes = get(row);
      return bytes === null ? '\u2013' : readable(bytes);
    },
  };
}

/** A column of sizes of packages: marks those that are doubtful. */
function packageSizeColumn(title, get) {
  const column = sizeColumn(title, get);
  return {
    ...column,
    text: (row) => doubtOf(get(row)) ? `! ${column.text(row)}` : column.text(row),
    hint: (row) => doubtOf(get(row)),
  };
}

function numberColumn(title, get) {
  return {
    title,
    className: 'number minor',
    width: '7.5rem',
    value: get,
    text: (row) => get(row).toLocaleString('en'),
  };
}

/** The names of products as descriptions: the first few, and how many more. */
function nameSome(named) {
  const most = 20;
  const names = named.slice(0, most).map(nameProduct);
  return named.length > most ? [...names, counted(named.length - most, 'other')] : names;
}

function explainSizes({bytesToFetch, bytesUnpacked, bytesDeleted}) {
  return [
    ['To fetch', exact(bytesToFetch)],
    ['Unpacked', exact(bytesUnpacked)],
    ['Deleted', exact(bytesDeleted)],
  ];
}

const SUMS = [
  sizeColumn('To fetch', (row) => row.bytesToFetch),
  sizeColumn('Unpacked', (row) => row.bytesUnpacked),
  sizeColumn('Deleted', (row) => row.bytesDeleted),
];

function makeProductTable() {
  const columns = [
    {title: 'Product', text: (row) => row.name},
    {title: 'Base code', className: 'minor', width: '8rem',
     text: (row) => row.baseCode === null ? '' : row.baseCode},
    numberColumn('Extract', (row) => row.packagesToExtract),
    numberColumn('Delete', (row) => row.packagesToDelete),
    ...SUMS,
  ];
  return new DataTable('Products', columns, products, (row) => [
    ['Product', nameProduct(row)],
    ['Extract', `${counted(row.packagesToExtract, 'package')} from ` +
                counted(row.componentsToExtract.length, 'component')],
    ['Delete', `${counted(row.packagesToDelete, 'package')} from ` +
               counted(row.componentsToDelete.length, 'component')],
    ...explainSizes(row),
  ]);
}

function makeComponentTable() {
  const columns = [
    {title: 'Component', text: (row) => row.name},
    numberColumn('Products', (row) => row.products.length),
    numberColumn('Extract', (row) => row.packagesToExtract.length),
    numberColumn('Delete', (row) => row.packagesToDelete.length),
    ...SUMS,
  ];
  return new DataTable('Components', columns, components, (row) => [
    ['Component', row.name],
    ['Extract', counted(row.packagesToExtract.length, 'package')],
    ['Delete', counted(row.packagesToDelete.length, 'package')],
    ...explainSizes(row),
    ['Products', ...nameSome(row.products)],
  ]);
}

function makePackageTable() {
  const componentsOf = (row) => row.components.map((component) => component.name);
  const columns = [
    {title: 'Package', text: (row) => row.key},
    {title: 'Component', className: 'minor', width: '11rem',
     text: (row) => componentsOf(row).join(', ')},
    numberColumn('Products', (row) => productsOf(row).length),
    packageSizeColumn('To fetch', (row) => row.fetch),
    packageSizeColumn('Unpacked', (row) => row.unpacked),
    packageSizeColumn('Deleted', (row) => row.deleted),
  ];
  const maybe = (term, bytes) => bytes === null
      ? []
      : [[term, exact(bytes), ...[doubtOf(bytes)].filter(Boolean)]];
  return new DataTable('Packages', columns, packages, (row) => [
    ['Package', row.key],
    ['Component', ...componentsOf(row)],
    ...maybe('To fetch', row.fetch),
    ...maybe('Unpacked', row.unpacked),
    ...maybe('Deleted', row.deleted),
    ['Products', ...nameSome(productsOf(row))],
  ]);
}

function makeFileTable() {
  const columns = [
    {title: 'File to delete', text: (row) => row.path},
    {title: 'Package', width: '40%', text: (row) => row.key},
  ];
  return new DataTable('Files', columns, listFiles(), (row) => [
    ['File', row.path],
    ['Package', row.key],
    ['Component', row.component],
  ]);
}


// --- findings ---

const SEVERITIES = ['error', 'warning', 'info'];

/** What the linter found, with texts to show. */
function listFindings() {
  const show = (text) => text === '' ? '' : visible(text);
  return contents.findings.map((finding) => ({
    ...finding,
    message: show(finding.message),
    advice: show(finding.advice),
    item: show(finding.item),
    pointer: show(finding.pointer),
  }));
}

/** How many findings there are: "1 error, 2 warnings". */
function countFindings(findings) {
  const counts = SEVERITIES.flatMap((severity) => {
    const number = findings.filter((finding) => finding.severity === severity).length;
    return number > 0 ? [counted(number, severity)] : [];
  });
  const others = contents.omittedFindings;
  return others > 0
      ? `The first ${counted(findings.length, 'finding')}: ${counts.join(', ')}. ` +
            `${counted(others, 'more finding')} not listed here; run update-metadata lint.`
      : `${counts.join(', ')}.`;
}

function makeFindingTable(findings) {
  const columns = [
    {title: 'Message', text: (row) => row.message},
    {title: 'Severity', width: '7rem', text: (row) => row.severity,
     value: (row) => -SEVERITIES.indexOf(row.severity),
     style: (row) => `severity-${row.severity}`},
    {title: 'Rule', width: '13rem', text: (row) => row.rule},
    {title: 'Line', className: 'number', width: '9rem', value: (row) => row.line,
     text: (row) => `${row.line}:${row.column}`},
  ];
  return new DataTable('Findings', columns, findings, (row) => [
    ['Finding', `${row.message} [${row.rule}]`],
    ...(row.item ? [['In', row.item]] : []),
    ['At', `line ${row.line}, column ${row.column}`, ...(row.pointer ? [row.pointer] : [])],
    ...(row.advice ? [['What to do', row.advice]] : []),
  ]);
}

function showFindings() {
  const findings = listFindings();
  if (findings.length === 0) {
    byId('findings-text').textContent = 'No problems found.';
    return;
  }
  byId('findings-text').textContent = countFindings(findings);
  byId('findings').append(makeFindingTable(findings).element);
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
