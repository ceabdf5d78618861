// validate.js REPORT_SCHEMA SARIF_SCHEMA DIRECTORY: the reports that make-reports left in DIRECTORY.
'use strict';
const assert = require('assert');
const crypto = require('crypto');
const fs = require('fs');
const path = require('path');
const Ajv = require('ajv/dist/2020');
const addFormats = require('ajv-formats');

const [schemaFile, sarifSchemaFile, directory] = process.argv.slice(2);
const read = (name) => fs.readFileSync(path.join(directory, name));
const parse = (bytes) => JSON.parse(new TextDecoder('utf-8', {fatal: true}).decode(bytes));

const validator = (options, schema, ...others) => {
  const ajv = new Ajv({allErrors: true, ...options});
  addFormats(ajv);
  for (const other of others) ajv.addSchema(other);
  ajv.addSchema(schema, 'schema');
  return (pointer, value, what) => {
    const validate = ajv.getSchema('schema' + pointer);
    assert(validate(value), `${what}: ${ajv.errorsText(validate.errors)}`);
    console.log(`formats: ${what}: valid`);
  };
};

// Readers pass over fields that they do not know; here all are known.
const strict = (schema) => {
  const closed = structuredClone(schema);
  closed.unevaluatedProperties = false;
  for (const [name, definition] of Object.entries(closed.$defs)) {
    const isPart = name === 'call' || name === 'run';
    if (!isPart && definition.type === 'object') definition.unevaluatedProperties = false;
  }
  closed.$defs.lastLine = {type: 'object', allOf: [{$ref: '#/$defs/run'}], unevaluatedProperties: false};
  return closed;
};

const schema = parse(fs.readFileSync(schemaFile));
const validate = validator({strict: true, strictRequired: false}, strict(schema));
const report = parse(read('report.json'));
validate('', report, 'report.json');
assert.throws(() => validate('', {...report, surprise: 1}, 'with a field more'));
assert.strictEqual(report.applications.length, report.summary.applications);

const lines = read('report.jsonl').toString().trimEnd().split('\n').map((line) => JSON.parse(line));
const last = lines.pop();
lines.forEach((line, i) => {
  assert.deepStrictEqual({...line, seconds: 0}, {...report.applications[i], seconds: 0});
});
validate('#/$defs/lastLine', last, 'the last line of report.jsonl');
assert.strictEqual(lines.length, report.summary.applications);

// Comparisons: of the report with itself, and with another version.
const comparisonSchema = parse(fs.readFileSync(path.join(path.dirname(schemaFile), 'tarvo-check-comparison.schema.json')));
const closed = structuredClone(comparisonSchema);
closed.unevaluatedProperties = false;
for (const definition of Object.values(closed.$defs)) {
  if (definition.type === 'object') definition.unevaluatedProperties = false;
}
const validateComparison = validator({strict: true, strictRequired: false}, closed, strict(schema));
const comparisons = ['comparison.json', 'changes.json'].map((name) => {
  const comparison = parse(read(name));
  validateComparison('', comparison, name);
  return comparison;
});
assert.deepStrictEqual([comparisons[0].summary.new, comparisons[0].summary.gone, comparisons[0].summary.moved], [0, 0, 0]);
const changes = new Set(comparisons[1].compared.flatMap(({findings}) => findings.map(({change}) => change)));
assert.deepStrictEqual([...changes].sort(), ['gone', 'moved', 'new']);

// A mark counts bytes.
for (const {findings, undetermined} of report.applications) {
  for (const {excerpt, code} of [...findings, ...undetermined]) {
    const marked = Buffer.from(excerpt.text).subarray(excerpt.mark, excerpt.mark + excerpt.markLength).toString();
    assert.strictEqual(marked, code);
  }
}

const validateSarif = validator({strict: false}, parse(fs.readFileSync(sarifSchemaFile)));
for (const name of ['report.sarif', 'clean.sarif']) validateSarif('', parse(read(name)), name);
const [run] = parse(read('report.sarif')).runs;
const calls = report.applications.flatMap(({findings, undetermined}) => [...findings, ...undetermined]);
assert.strictEqual(run.results.length, calls.length);
run.results.forEach(({locations: [{physicalLocation: {artifactLocation}}]}, i) => {
  let way = '';
  for (let index = artifactLocation.index; index !== undefined; index = run.artifacts[index].parentIndex) {
    way = decodeURIComponent(run.artifacts[index].location.uri.replace(/%[89A-F][0-9A-F]/g, '?')) + (way && '!/' + way);
  }
  // Names are byte by byte there; here those that are not ASCII count as one question mark each.
  const expected = Buffer.from(calls[i].path.replace(/\uFFFD/g, '\x80'), 'utf-8').toString('latin1')
      .replace(/\xC2\x80/g, '?').replace(/[\x80-\xFF]/g, '?');
  assert.strictEqual(way, expected);
});

// What is excused keeps its place and says why.
const excused = parse(read('excused.json'));
validate('', excused, 'excused.json');
validateSarif('', parse(read('excused.sarif')), 'excused.sarif');
const [minified, other] = excused.applications;
assert.deepStrictEqual([minified.verdict, minified.findings[0].status], ['clean', 'accepted']);
assert.deepStrictEqual(minified.excluded, [{path: 'minified/unused', files: 1}]);
assert.deepStrictEqual(minified.findings[0].acceptance, {reason: '{0} [a](b)', owner: 'Kim', expires: '9999-12-31'});
assert(other.findings.some(({kind, status}) => kind === 'deprecated' && status === 'noted'));

// The page's policy names the script and the style that stand in it.
const page = read('report.html').toString();
for (const name of ['comparison.html', 'changes.html']) {
  const text = read(name).toString();
  const hash = crypto.createHash('sha256').update(text.match(/<style>([^]*?)<\/style>/)[1]).digest('base64');
  assert(text.includes(`style-src 'sha256-${hash}'`) && !text.includes('<script'), name);
}
for (const [element, directive] of [['style', 'style-src'], ['script', 'script-src']]) {
  const [, text] = page.match(new RegExp(`<${element}>([^]*?)</${element}>`));
  const hash = crypto.createHash('sha256').update(text).digest('base64');
  assert(page.includes(`${directive} 'sha256-${hash}'`), `the hash of ${element} is ${hash}`);
}
console.log('formats: report.html: its policy fits');
