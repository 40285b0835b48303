// What the document says, as the rows that the page shows.
//
// The element "contents" holds the object that ReportData.h describes. A size is a number, exact as
// the document's are; a sum is a text of digits, which may need more bits than a number here has.
// One that needs more than 64 is told by the bound that it passes: ">" or "<" and its digits.

const contents = JSON.parse(document.getElementById('contents').textContent);

// What a name may hold and a reader would not see, or see something else than it is: controls,
// separators of lines, what turns the direction of writing, and the byte-order mark. The same as
// those of Text.cpp.
const UNSEEN =
    /[\u0000-\u001f\u007f-\u009f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufeff]/g;

/** A name as it is shown: what would not be seen as its code, <U+202E>. */
function visible(name) {
  if (name === '') {
    return '(empty)';
  }
  return name.replace(UNSEEN, (character) => {
    const code = character.charCodeAt(0).toString(16).toUpperCase().padStart(4, '0');
    return `<U+${code}>`;
  });
}

/** The products, with names to show. */
function listProducts() {
  return contents.products.map((product) => ({
    ...product,
    name: visible(product.name),
    baseCode: product.baseCode === null ? null : visible(product.baseCode),
  }));
}

/** The components, with names to show and the products that name them. */
function listComponents(products) {
  const components = contents.components.map((component) => ({
    ...component,
    name: visible(component.name),
    extractedBy: [],
    deletedBy: [],
  }));
  for (const product of products) {
    product.componentsToExtract.forEach((index) => components[index].extractedBy.push(product));
    product.componentsToDelete.forEach((index) => components[index].deletedBy.push(product));
  }
  for (const component of components) {
    component.products = uniteProducts([component.extractedBy, component.deletedBy]);
  }
  return components;
}

function uniteProducts(lists) {
  return lists.length === 1 ? lists[0] : [...new Set(lists.flat())];
}

/** Where productLists has the products that extract a component, and those that delete it. */
function extractionsOf(component) {
  return 2 * component;
}

function deletionsOf(component) {
  return 2 * component + 1;
}

/**
 * One row for each package, whether it is extracted, deleted or both: its key, its own name in the
 * first of its components, and its sizes, null where nothing is done. Gives each component the
 * rows of what it extracts.
 */
function listPackages(components) {
  const rows = new Map();
  const note = (key, component, rawComponent, productList, sizes) => {
    let row = rows.get(key);
    if (!row) {
      const name = visible(key.slice(rawComponent.name.length + 1));
      row = {key: visible(key), name, components: [], productLists: [], fetch: null,
             unpacked: null, deleted: null};
      rows.set(key, row);
    }
    if (row.components[row.components.length - 1] !== component) {
      row.components.push(component);
    }
    row.productLists.push(productList);
    return Object.assign(row, sizes);
  };
  components.forEach((component, index) => {
    const raw = contents.components[index];
    component.extracted = raw.packagesToExtract.map((number) => {
      const [key, fetch, unpacked] = contents.packagesToExtract[number];
      return note(key, component, raw, extractionsOf(index), {fetch, unpacked});
    });
    for (const number of raw.packagesToDelete) {
      const [key, deleted] = contents.packagesToDelete[number];
      note(key, component, raw, deletionsOf(index), {deleted});
    }
  });
  return [...rows.values()];
}

/** The products that extract or delete a package; one list for all packages that have the same. */
function productsOf(row) {
  const key = row.productLists.join();
  if (!unitedProducts.has(key)) {
    unitedProducts.set(key, uniteProducts(row.productLists.map((list) => productLists[list])));
  }
  return unitedProducts.get(key);
}

/** One row for each file to delete. */
function listFiles() {
  return contents.componentsWithFiles.flatMap(
      (component) => component.packages.flatMap(({key, files}) => files.map((path) => ({
        path: visible(path),
        key: visible(key),
        component: visible(component.name),
      }))));
}

const {totals} = contents;
const products = listProducts();
const components = listComponents(products);
const productLists = components.flatMap(({extractedBy, deletedBy}) => [extractedBy, deletedBy]);
const unitedProducts = new Map();
const packages = listPackages(components);
