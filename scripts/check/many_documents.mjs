// Runs the commands and queries of a page in a folder, from top to bottom, and compares the rows of each query with the
// table below it. Commands are indented; ```make is written to Makefile; ```sql may be followed by a table.
//
//   many_documents.mjs PAGE FOLDER
//
// With UMP_UPDATE_GOLDEN in the environment, the tables are replaced. DuckDB's module is installed above FOLDER.

import { execFileSync, spawnSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { resolve } from 'node:path';

const PART = /^(?: {4}.*\n)+|^```(make|sql)\n([^]*?)^```\n(?:\n(?:\|.*\n)+)?/gm;

// The rows of a result as a table; numbers are aligned to the right, and a null is an empty cell.
function tableOf(result) {
  const rules = result.columnTypes().map((type) => /INT|DOUBLE|DECIMAL/.test(type) ? '--:' : '---');
  const line = (cells) => `| ${cells.map((cell) => cell ?? '').join(' | ')} |\n`;
  return line(result.columnNames()) + line(rules) + result.getRowsJson().map(line).join('');
}

const page = resolve(process.argv[2]);
process.chdir(process.argv[3]);
const { DuckDBInstance } = createRequire(`${process.cwd()}/`)('@duckdb/node-api');
const connection = await (await DuckDBInstance.create()).connect();
const text = readFileSync(page, 'utf8');
let [commands, queries] = [0, 0];
let expected = '';
let end = 0;
for (const part of text.matchAll(PART)) {
  const [all, language, code] = part;
  expected += text.slice(end, part.index);
  end = part.index + all.length;
  if (language === 'sql') {
    const result = await connection.runAndReadAll(code);
    const hasRows = result.columnNames().join() !== 'Count';
    expected += `\`\`\`sql\n${code}\`\`\`\n${hasRows ? `\n${tableOf(result)}` : ''}`;
    queries += 1;
  } else {
    if (language === 'make') {
      writeFileSync('Makefile', code);
    } else {
      execFileSync('bash', ['-euo', 'pipefail', '-c', all], { stdio: ['ignore', 'ignore', 'inherit'] });
      commands += 1;
    }
    expected += all;
  }
}
expected += text.slice(end);
if ('UMP_UPDATE_GOLDEN' in process.env) {
  writeFileSync(page, expected);
} else if (expected !== text) {
  writeFileSync('page.md', expected);
  spawnSync('diff', ['-u', page, 'page.md'], { stdio: 'inherit' });
  process.exit(1);
}
console.log(`many-documents: ${commands} commands run, and ${queries} queries have the rows that the page shows`);
