"""The applications of apps/ or held-out/: their annotations, and the packages that are made of them.

An annotation is a comment of its own, on the line of the call:

    audio.GetSecretLevel();   /* call: AUDIO.GetSecretLevel */

It is turned into blanks when the application is built: what a checker gets has the same lines and columns, and no trace
of what is true. README.md says which annotations there are and what each means.
"""

import dataclasses
import json
import pathlib
import re
import shutil
import subprocess
import xml.etree.ElementTree
import zipfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
DATABASE = ROOT / "data" / "APIAnalEngineDB.xml"
CLASS_ID = "MORVANE-NAVERTIX-"

_kinds = r"(?P<kind>call|text|also|decoy|undecidable)\b:?(?P<what>[^*]*?)"
_annotation = re.compile(r"/\*\s*" + _kinds + r"\s*\*/|<!--\s*" + _kinds.replace("<kind>", "<kind2>").replace(
    "<what>", "<what2>") + r"\s*-->")
_member = re.compile(r"^([A-Z]+)\.([A-Za-z_$][\w$]*)$")

# Programs that applications are built with: npm packages without dependencies, and what to start.
TOOLS = {
    "esbuild": ("esbuild-wasm", "0.19.12", "bin/esbuild"),
    "rollup": ("rollup", "3.29.5", "dist/bin/rollup"),
    "uglifyjs": ("uglify-js", "3.19.3", "bin/uglifyjs"),
    "tsc": ("typescript", "5.3.3", "bin/tsc"),
}


class Unavailable(Exception):
    """What an application is built with cannot be fetched."""


class Mistake(Exception):
    """An annotation or a recipe is wrong."""


@dataclasses.dataclass
class Call:
    plugin: str
    method: str
    places: set  # of (path, line); empty where the built text does not spell the method
    in_text: bool = False   # code in a text or a template: the browser sees it elsewhere


@dataclasses.dataclass
class Application:
    style: str
    name: str
    folder: pathlib.Path          # below apps/ or held-out/
    start: str = "index.html"
    calls: dict = dataclasses.field(default_factory=dict)         # by method
    decoys: set = dataclasses.field(default_factory=set)          # of (path, line)
    undecidable: dict = dataclasses.field(default_factory=dict)   # (path, line): plug-in
    built: pathlib.Path = None    # folder with what is packed
    package: pathlib.Path = None


def documented():
    """Names of all documented methods."""
    tree = xml.etree.ElementTree.parse(DATABASE)
    return {element.text for element in tree.iter("Function")}


def find(names=(), where="apps"):
    """All applications of a folder, or those whose style or name is among `names`, in the order of their paths."""
    found = []
    for folder in sorted((HERE / where).glob("*/*/")):
        app = Application(folder.parent.name, folder.name, folder)
        if not names or app.style in names or app.name in names:
            found.append(app)
    return found


def recipe(app):
    file = app.folder / "recipe.json"
    return json.loads(file.read_text()) if file.exists() else {}


def _members(what, place):
    for item in filter(None, (part.strip() for part in what.split(","))):
        match = _member.match(item)
        if not match:
            raise Mistake(f"{place}: not PLUGIN.Method: {item}")
        yield match.groups()


def _read_annotations(app, text, path, also):
    """Adds the annotations of `text` to `app`, further places to `also`. Gives the text without them."""
    for number, line in enumerate(text.split("\n"), 1):
        place = (path, number)
        for match in _annotation.finditer(line):
            kind = match["kind"] or match["kind2"]
            what = (match["what"] if match["kind"] else match["what2"]).strip()
            where = f"{app.folder.name}/{path}:{number}"
            if kind in ("call", "text"):
                for plugin, method in _members(what, where):
                    if method in app.calls:
                        raise Mistake(f"{where}: {method} is called twice")
                    app.calls[method] = Call(plugin, method, {place}, kind == "text")
            elif kind == "also":
                also += [(method, place, where) for _, method in _members(what, where)]
            elif kind == "decoy":
                app.decoys.add(place)
            else:
                app.undecidable[place] = what
    return _annotation.sub(lambda match: " " * len(match[0]), text)


def _fetch(package, version, cache, work):
    """Folder of the unpacked npm package."""
    folder = work / "npm" / f"{package}-{version}"
    if not folder.exists():
        partly = work / "npm" / "partly"
        shutil.rmtree(partly, ignore_errors=True)
        partly.mkdir(parents=True)
        run = subprocess.run([ROOT / "bench" / "fetch-library", package, version, cache, partly], capture_output=True,
                             text=True)
        if run.returncode:
            raise Unavailable(run.stderr.strip().splitlines()[-1])
        partly.rename(folder)
    return folder


def _part(part, folder, cache, work):
    """Text of a file of the application, or of a library: "npm:jquery 3.7.1/dist/jquery.js"."""
    if not part.startswith("npm:"):
        return (folder / part).read_text()
    package, rest = part[4:].split(" ")
    version, path = rest.split("/", 1)
    return (_fetch(package, version, cache, work) / path).read_text()


def _follow_recipe(app, steps, cache, work):
    folder = app.built
    for target, parts in steps.get("join", {}).items():
        text = "\n".join(_part(part, folder, cache, work) for part in parts)
        (folder / target).parent.mkdir(parents=True, exist_ok=True)
        (folder / target).write_text(text)
    for target, insertion in steps.get("insert", {}).items():
        text = (folder / target).read_text()
        if text.count(insertion["before"]) != 1:
            raise Mistake(f"{app.name}: {insertion['before']!r} is not once in {target}")
        text = text.replace(insertion["before"], (folder / insertion["file"]).read_text() + insertion["before"])
        (folder / target).write_text(text)
    for tool, *arguments in steps.get("build", []):
        package, version, program = TOOLS[tool]
        command = ["node", _fetch(package, version, cache, work) / program, *arguments]
        run = subprocess.run(command, cwd=folder, capture_output=True, text=True)
        if run.returncode:
            raise Mistake(f"{app.name}: {tool}: {run.stdout}{run.stderr}")
    for path in steps.get("omit", []):
        target = folder / path
        shutil.rmtree(target) if target.is_dir() else target.unlink()
    for path, encoding in steps.get("encode", {}).items():
        (folder / path).write_bytes((folder / path).read_text().encode(encoding))


def _places_in_built_text(app):
    """The places of calls in text that a tool made: the lines where the method's name stands."""
    texts = {str(file.relative_to(app.built)): file.read_text(errors="replace").split("\n")
             for file in sorted(app.built.rglob("*")) if file.is_file()}
    for call in app.calls.values():
        name = re.compile(r"(?<![\w$])" + re.escape(call.method) + r"(?![\w$])")
        moved = {path for path, _ in call.places if path not in texts}
        if moved:
            call.places = {(path, number) for path, lines in texts.items() for number, line in enumerate(lines, 1)
                           if name.search(line)}


def _zip(app):
    with zipfile.ZipFile(app.package, "w", zipfile.ZIP_DEFLATED) as archive:
        for file in sorted(app.built.rglob("*")):
            if file.is_file():
                entry = zipfile.ZipInfo(str(file.relative_to(app.built)), (2020, 1, 1, 0, 0, 0))
                entry.compress_type = zipfile.ZIP_DEFLATED
                entry.external_attr = 0o644 << 16
                archive.writestr(entry, file.read_bytes())


def build(app, cache, work):
    """Makes `app.package` and fills in the truth. Raises Unavailable or Mistake."""
    app.built = work / "built" / app.style / app.name
    shutil.rmtree(app.built, ignore_errors=True)
    also = []
    for file in sorted(app.folder.rglob("*")):
        if file.is_file() and file.name != "recipe.json":
            path = file.relative_to(app.folder)
            (app.built / path).parent.mkdir(parents=True, exist_ok=True)
            (app.built / path).write_text(_read_annotations(app, file.read_text(), str(path), also))
    for method, place, where in also:
        if method not in app.calls:
            raise Mistake(f"{where}: no call of {method}")
        app.calls[method].places.add(place)
    config = app.built / "config.xml"
    if not config.exists():
        config.write_text(f'<?xml version="1.0" encoding="UTF-8"?>\n<widget id="{app.name}" version="1.0.0">\n'
                          f'  <name>{app.name}</name>\n  <content src="index.html"/>\n</widget>\n')
    app.start = next(xml.etree.ElementTree.parse(config).iter("content")).get("src")
    known = documented() & set(app.calls)
    if known:
        raise Mistake(f"{app.name}: documented methods are annotated: {', '.join(sorted(known))}")
    steps = recipe(app)
    if steps:
        _follow_recipe(app, steps, cache, work)
        _places_in_built_text(app)
    app.package = work / "packages" / f"{app.style}-{app.name}.wgt"
    app.package.parent.mkdir(parents=True, exist_ok=True)
    _zip(app)
