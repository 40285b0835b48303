// The tables of the page: their columns, and what they say of a chosen row.

/** A column of sizes; null means no size. */
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

/** A column of package sizes, which marks doubtful ones. */
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

/** Lists the first few products, and how many more there are. */
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

/** The linter's findings, with texts to show. */
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

/** Counts findings: "1 error, 2 warnings." */
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
