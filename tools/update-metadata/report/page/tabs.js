/** Tabs, each with a table that is made when its tab is first chosen. */
class Tabs {
  constructor(tabs) {
    this.tabs = tabs.map(({title, rows, makeTable}, index) => {
      const button = make('button', {
        type: 'button',
        role: 'tab',
        id: `tab-${index}`,
        textContent: `${title} (${rows.toLocaleString('en')})`,
        aria: {controls: `panel-${index}`},
      });
      const panel = make('div', {role: 'tabpanel', id: `panel-${index}`, hidden: true,
                                 aria: {labelledby: button.id}});
      button.addEventListener('click', () => this.choose(index));
      return {button, panel, makeTable, table: null};
    });
    byId('tabs').append(...this.tabs.map((tab) => tab.button));
    byId('tables').append(...this.tabs.map((tab) => tab.panel));
    byId('tabs').addEventListener('keydown', (event) => this.onKey(event));
    this.choose(0);
  }

  /** Shows the table of a tab and returns it. */
  choose(index) {
    this.chosen = index;
    this.tabs.forEach(({button, panel}, other) => {
      button.setAttribute('aria-selected', String(other === index));
      button.tabIndex = other === index ? 0 : -1;
      panel.hidden = other !== index;
    });
    const tab = this.tabs[index];
    if (!tab.table) {
      tab.table = tab.makeTable();
      tab.panel.append(tab.table.element);
    }
    return tab.table;
  }

  onKey(event) {
    const last = this.tabs.length - 1;
    const moves = {
      ArrowLeft: this.chosen === 0 ? last : this.chosen - 1,
      ArrowRight: this.chosen === last ? 0 : this.chosen + 1,
      Home: 0,
      End: last,
    };
    if (event.key in moves) {
      event.preventDefault();
      this.choose(moves[event.key]);
      this.tabs[this.chosen].button.focus();
    }
  }
}
