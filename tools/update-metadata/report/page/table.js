// Browsers limit the height of an element: a table that would be higher than this many pixels
// scrolls by more than it appears to.
const MOST_HEIGHT = 8000000;
const MOST_ROWS_ON_PAPER = 200;

function isNumber({className = ''}) {
  return className.split(' ').includes('number');
}

/**
 * A table of any number of rows to search and sort; only the rows in view are elements.
 *
 * A column is {title, text(row), value(row), hint(row), width, className, style(row)}. A cell shows
 * `text`, and `hint` or else `text` under the pointer; `style` is its class. Columns sort by
 * `value`, a number, or else by `text`; the search reads those without the class "number". Narrow
 * windows hide columns of the class "minor". `explain(row)` describes the chosen row: a list of
 * lists of a term and its descriptions.
 */
class DataTable {
  constructor(label, columns, rows, explain) {
    this.label = label;
    this.columns = columns;
    this.rows = rows;
    this.explain = explain;
    this.shown = rows;
    this.chosen = -1;
    this.sorting = {column: -1, ascending: true};
    this.elements = [];
    this.element = this.build();
    new ResizeObserver(() => this.draw()).observe(this.scroll);
    addEventListener('beforeprint', () => this.drawForPaper());
    addEventListener('afterprint', () => this.draw());
  }

  build() {
    this.input = make('input', {type: 'search', autocomplete: 'off', spellcheck: false});
    this.input.addEventListener('input', () => this.search(this.input.value));
    this.count = make('span', {className: 'muted', role: 'status'});

    this.heads = this.columns.map((column, index) => {
      const button = make('button', {type: 'button', textContent: column.title});
      button.addEventListener('click', () => this.sort(index));
      const head = make('th', {role: 'columnheader', scope: 'col',
                               className: column.className || ''}, button);
      head.style.setProperty('--width', column.width || 'auto');
      return head;
    });
    this.above = make('tr', {className: 'space', role: 'presentation'});
    this.below = make('tr', {className: 'space', role: 'presentation'});
    this.body = make('tbody', {role: 'rowgroup'}, this.above, this.below);
    this.head = make('thead', {role: 'rowgroup'},
                     make('tr', {role: 'row', aria: {rowindex: 1}}, ...this.heads));
    this.table = make('table', {role: 'grid', tabIndex: 0,
                                aria: {label: this.label, colcount: this.columns.length}},
                      this.head, this.body);
    this.table.addEventListener('keydown', (event) => this.onKey(event));
    this.body.addEventListener('click', (event) => this.onClick(event));
    this.scroll = make('div', {className: 'scroll'}, this.table);
    this.scroll.addEventListener('scroll', () => this.drawSoon(), {passive: true});
    this.details = make('dl', {className: 'details', aria: {live: 'polite'}});

    const label = make('label', {textContent: 'Search '}, this.input);
    return make('div', {}, make('div', {className: 'search'}, label, this.count), this.scroll,
                this.details);
  }

  /** Keeps the rows that contain every word of `text`, in any column and any case. */
  search(text) {
    const words = text.toLowerCase().split(/\s+/).filter(Boolean);
    if (words.length > 0 && !this.texts) {
      const searched = this.columns.filter((column) => !isNumber(column));
      this.texts = new Map(this.rows.map(
          (row) => [row, searched.map((column) => column.text(row)).join('\n').toLowerCase()]));
    }
    this.shown = words.length === 0 ? this.rows : this.rows.filter((row) => {
      const rowText = this.texts.get(row);
      return words.every((word) => rowText.includes(word));
    });
    this.restart();
  }

  /** Sorts by a column, texts ascending and numbers descending; the next time in reverse. */
  sort(index) {
    const {text, value} = this.columns[index];
    const isSame = this.sorting.column === index;
    const ascending = isSame ? !this.sorting.ascending : !value;
    this.sorting = {column: index, ascending};
    this.heads.forEach((head, other) => {
      if (other === index) {
        head.setAttribute('aria-sort', ascending ? 'ascending' : 'descending');
      } else {
        head.removeAttribute('aria-sort');
      }
    });
    const keyed = this.rows.map((row) => [value ? value(row) : text(row).toLowerCase(), row]);
    const sign = ascending ? 1 : -1;
    keyed.sort(([left], [right]) => left < right ? -sign : left > right ? sign : 0);
    this.rows = keyed.map(([, row]) => row);
    this.search(this.input.value);
  }

  /** Chooses a row, clearing the search. */
  show(row) {
    this.input.value = '';
    this.search('');
    this.choose(this.shown.indexOf(row));
    this.table.focus();
  }

  restart() {
    this.chosen = -1;
    this.details.replaceChildren();
    this.table.removeAttribute('aria-activedescendant');
    this.scroll.scrollTop = 0;
    this.draw();
  }

  choose(index) {
    if (index < 0 || index >= this.shown.length) {
      return;
    }
    this.chosen = index;
    this.bringIntoView(index);
    this.draw();
    this.details.replaceChildren(
        ...this.explain(this.shown[index]).flatMap(([term, ...texts]) => defined(term, ...texts)));
  }

  onClick(event) {
    const row = event.target.closest('tr.row');
    if (row) {
      this.choose(this.first + this.elements.indexOf(row));
    }
  }

  onKey(event) {
    if (event.target !== this.table) {
      return;  // a heading's button
    }
    const page = Math.max(Math.floor(this.viewHeight() / this.rowHeight) - 1, 1);
    const last = this.shown.length - 1;
    const moves = {
      ArrowUp: Math.max(this.chosen - 1, 0),
      ArrowDown: this.chosen + 1,
      PageUp: Math.max(this.chosen - page, 0),
      PageDown: Math.min(this.chosen + page, last),
      Home: 0,
      End: last,
    };
    if (event.key in moves) {
      event.preventDefault();
      this.choose(moves[event.key]);
    }
  }

  drawSoon() {
    if (!this.isAwaited) {
      this.isAwaited = true;
      requestAnimationFrame(() => {
        this.isAwaited = false;
        this.draw();
      });
    }
  }

  viewHeight() {
    return Math.max(this.scroll.clientHeight - this.head.offsetHeight, 0);
  }

  // Measures the height of a row, and by how much more than the pixels scrolled the rows move.
  // Needs a row.
  measure() {
    if (this.elements.length === 0) {
      this.fill(0, 1);
    }
    this.rowHeight = this.elements[0].getBoundingClientRect().height;
    const full = this.shown.length * this.rowHeight;
    this.height = Math.min(full, MOST_HEIGHT);
    const view = this.viewHeight();
    this.scale = this.height > view && full > this.height ? (full - view) / (this.height - view)
                                                          : 1;
  }

  bringIntoView(index) {
    this.measure();
    const view = this.viewHeight();
    const top = this.scroll.scrollTop * this.scale;
    const rowTop = index * this.rowHeight;
    if (rowTop < top) {
      this.scroll.scrollTop = rowTop / this.scale;
    } else if (rowTop + this.rowHeight > top + view) {
      this.scroll.scrollTop = Math.ceil((rowTop + this.rowHeight - view) / this.scale);
    }
  }

  drawForPaper() {
    this.fill(0, Math.min(this.shown.length, MOST_ROWS_ON_PAPER));
    if (this.shown.length > MOST_ROWS_ON_PAPER) {
      this.count.textContent =
          `The first ${MOST_ROWS_ON_PAPER} of ${counted(this.shown.length, 'row')}`;
    }
  }

  draw() {
    if (this.scroll.clientHeight === 0) {
      return;  // hidden by its tab
    }
    this.table.setAttribute('aria-rowcount', String(this.shown.length + 1));
    this.count.textContent = this.shown.length === this.rows.length
        ? counted(this.rows.length, 'row')
        : `${this.shown.length.toLocaleString('en')} of ${counted(this.rows.length, 'row')}`;
    if (this.shown.length === 0) {
      this.fill(0, 0);
      this.setSpaces(0, 0);
      return;
    }
    this.measure();
    const view = this.viewHeight();
    const scrolled = Math.min(this.scroll.scrollTop, Math.max(this.height - view, 0));
    const top = scrolled * this.scale;
    const wanted = Math.ceil(view / this.rowHeight) + 2;
    const last = Math.max(this.shown.length - wanted, 0);
    this.first = Math.min(Math.floor(top / this.rowHeight), last);
    const count = Math.min(wanted, this.shown.length);
    this.fill(this.first, count);
    const above = Math.max(scrolled - (top - this.first * this.rowHeight), 0);
    this.setSpaces(above, Math.max(this.height - above - count * this.rowHeight, 0));
  }

  setSpaces(above, below) {
    this.above.style.height = `${above}px`;
    this.below.style.height = `${below}px`;
  }

  // Shows `count` rows starting at `first`.
  fill(first, count) {
    while (this.elements.length < count) {
      this.elements.push(this.makeRow());
    }
    while (this.elements.length > count) {
      this.elements.pop().remove();
    }
    if (count > 0 && this.elements[count - 1].nextSibling !== this.below) {
      this.below.before(...this.elements);
    }
    this.elements.forEach((element, offset) => this.fillRow(element, first + offset));
  }

  makeRow() {
    return make('tr', {className: 'row', role: 'row'}, ...this.columns.map(
        (column, index) => make('td', {
          role: 'gridcell',
          className: column.className || '',
          data: index > 0 ? {title: column.title} : {},
        })));
  }

  fillRow(element, index) {
    const row = this.shown[index];
    element.id = `${this.label.replace(/\W/g, '-')}-${index}`;
    element.setAttribute('aria-rowindex', String(index + 2));
    element.setAttribute('aria-selected', String(index === this.chosen));
    if (index === this.chosen) {
      this.table.setAttribute('aria-activedescendant', element.id);
    }
    this.columns.forEach((column, place) => {
      const cell = element.children[place];
      const text = column.text(row);
      if (cell.textContent !== text) {
        cell.textContent = text;
      }
      const hint = (column.hint && column.hint(row)) || text;
      if (cell.title !== hint) {
        cell.title = hint;
      }
      if (column.style) {
        cell.className = column.style(row);
      }
    });
  }
}
