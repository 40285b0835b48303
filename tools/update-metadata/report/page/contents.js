// The document's contents, as the rows that the page shows.
//
// The element "contents" contains the object that ReportData.h describes. A size is a number. A sum
// is a text of digits, since it may need more bits than a number has; one that needs more than 64
// bits is given as the bound that it exceeds: ">" or "<" and the bound's digits.

const contents = JSON.parse(document.getElementById('contents').textContent);

// Characters that cannot be seen or that mislead: controls, line separators, and what is not drawn.
// UnseenCharacters.h has the same.
const UNSEEN =
    /[\p{Cc}\p{Default_Ignorable_Code_Point}\u2028\u2029\u2800\ufff9-\ufffb\u{1d159}]/gu;

/** A name to show, with characters that cannot be seen as their codes: <U+202E>. */
function visible(name) {
  if (name === '') {
    return '(empty)';
  }
  return name.replace(UNSEEN, (character) => {
    const code = character.codePointAt(0).toString(16).toUpperCase().padStart(4, '0');
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

/** The places in productLists of the products that extract or delete a component. */
function extractionsOf(component) {
  return 2 * component;
}

function deletionsOf(component) {
  return 2 * component + 1;
}

/**
 * One row per package, extracted or deleted or both: its key, its name in the first of its
 * components, and its sizes, null where there is nothing to do. Sets `extracted` of each component
 * to the rows of the packages that it extracts.
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

/** The products that extract or delete a package; packages with the same products share a list. */
function productsOf(row) {
  const key = row.productLists.join();
  if (!unitedProducts.has(key)) {
    unitedProducts.set(key, uniteProducts(row.productLists.map((list) => productLists[list])));
  }
  return unitedProducts.get(key);
}

/** One row per file to delete. */
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
