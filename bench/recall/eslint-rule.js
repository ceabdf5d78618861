// eslint-rule.js FOLDER DATABASE: undocumented calls that ESLint finds in the scripts and pages of FOLDER, as JSON.
//
// The rule does what such a rule of a careful author does: it knows the ids of the plug-in elements of all pages,
// follows a variable of one file from its single assignment (a look-up by id, `document.embeds`, or another such variable),
// takes the ids for globals, and reports a call of a method that the database does not have.
"use strict";

const fs = require("fs");
const path = require("path");
const { Linter } = require("eslint");

const [folder, database] = process.argv.slice(2);
const documented = new Set(fs.readFileSync(database, "utf8").match(/(?<=<Function>)[^<]+/g));
const ofElements = new RegExp("^(?:(?:add|remove)EventListener|[gs]etAttribute|appendChild|removeChild|cloneNode|" +
  "remove|focus|blur|click|closest|querySelector(?:All)?|getElementsBy\\w+|forEach|map|filter|call|apply|bind)$");

const files = (below) => fs.readdirSync(below, { withFileTypes: true }).flatMap((entry) =>
  entry.isDirectory() ? files(path.join(below, entry.name)) : [path.join(below, entry.name)]);

const isPage = (file) => /\.(?:x?html?|php|jsp|svg)$/i.test(file);
const scanned = files(folder).filter((file) => isPage(file) || /\.[cm]?js$/.test(file));
const ids = new Set();
for (const file of scanned.filter(isPage)) {
  for (const [tag] of fs.readFileSync(file, "utf8").matchAll(/<(?:object|embed)\b[^>]*MORVANE-NAVERTIX-[^>]*>/gi)) {
    for (const [, id] of tag.matchAll(/\b(?:id|name)\s*=\s*["']?([\w$-]+)/gi)) {
      ids.add(id);
    }
  }
}

// The scripts of a page, all else blank, as the usual plug-in for pages gives them to the rules. Handlers are none.
const elsewhere = /\bsrc\s*=|\btype\s*=\s*["']?(?:text\/(?:x|t)|application\/json)/;
const scriptElement = new RegExp(`(<script\\b(?![^>]*(?:${elsewhere.source}))[^>]*>)([^]*?)(?=<\\/script)`, "gi");
const blank = (part) => part.replace(/[^\n]/g, " ");
const inPage = (source) => {
  let end = 0;
  let scripts = "";
  for (const match of source.matchAll(scriptElement)) {
    scripts += blank(source.slice(end, match.index) + match[1]) + match[2].replace(/<!--|\/\/\s*-->/g, blank);
    end = match.index + match[0].length;
  }
  return scripts + blank(source.slice(end));
};

const lookUps = /^(?:getElementById|querySelector|\$|\w*[bB]yId)$/;
const text = (node) => (node && node.type === "Literal" && typeof node.value === "string" ? node.value : null);
const named = (node) => (node.computed ? text(node.property) : node.property.name);

const rule = {
  create(context) {
    const variableOf = (node) => {
      for (let scope = context.sourceCode.getScope(node); scope; scope = scope.upper) {
        if (scope.set.has(node.name)) {
          return scope.set.get(node.name);
        }
      }
      return null;
    };
    // `$("#id")` is a list, of which [0] is the element.
    const isLookUp = (node, list = false) => {
      const id = text(node.arguments[0]);
      const callee = node.callee.type === "MemberExpression" ? named(node.callee) : node.callee.name;
      const isList = callee === "$" && id !== null && id.startsWith("#");
      return isList === list && lookUps.test(callee || "") && ids.has((id || "").replace(/^#/, ""));
    };
    const isPlugin = (node, depth = 0) => {
      if (depth > 8) {
        return false;
      }
      switch (node.type) {
        case "CallExpression": return isLookUp(node);
        case "LogicalExpression": return isPlugin(node.left, depth + 1) || isPlugin(node.right, depth + 1);
        case "ChainExpression": return isPlugin(node.expression, depth + 1);
        case "MemberExpression":
          return node.object.type === "MemberExpression" ? named(node.object) === "embeds" || isElementOfList(node)
            : node.object.type === "CallExpression" ? isElementOfList(node)
            : ["window", "self"].includes(node.object.name) && ids.has(named(node));
        case "Identifier": {
          const variable = variableOf(node);
          if (!variable || !variable.defs.length) {
            return ids.has(node.name);
          }
          const writes = variable.references.filter((one) => one.isWrite());
          const [{ writeExpr = null, identifier } = {}] = writes;
          return writes.length === 1 && writeExpr !== null && writeExpr.type !== "AssignmentPattern" &&
            identifier.parent.type !== "Property" && isPlugin(writeExpr, depth + 1);
        }
        default: return false;
      }
    };
    const isElementOfList = (node) =>
      node.object.type === "CallExpression" && isLookUp(node.object, true) && node.computed;
    return {
      CallExpression(node) {
        const callee = node.callee.type === "ChainExpression" ? node.callee.expression : node.callee;
        if (callee.type !== "MemberExpression" || !isPlugin(callee.object)) {
          return;
        }
        const method = named(callee);
        if (method && !documented.has(method) && !ofElements.test(method)) {
          context.report({ loc: callee.property.loc.start, message: method });
        }
      },
    };
  },
};

const linter = new Linter();
linter.defineRule("plugins", rule);
const found = [];
for (const file of scanned) {
  const source = fs.readFileSync(file, "utf8");
  const relative = path.relative(folder, file);
  for (const sourceType of ["script", "module"]) {
    const messages = linter.verify(isPage(file) ? inPage(source) : source,
      { parserOptions: { ecmaVersion: "latest", sourceType }, rules: { plugins: 2 } },
      { filename: relative, allowInlineConfig: false });
    if (!messages.some((one) => one.fatal)) {
      found.push(...messages.map(({ line, message }) => ({ path: relative, line, method: message })));
      break;
    }
  }
}
process.stdout.write(JSON.stringify(found));
