#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Rules of the tree that no compiler holds.

    lint.py RULE      prints each fault as "file: what is wrong" and exits with 1 when there is one

A rule is a function from a file's path (below the root, with slashes) and its text to a list of faults.
"""
import functools
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
CODE = {".h", ".cpp", ".qml", ".py", ".sh", ".frag", ".vert", ".js"}

# Folders of src/ and what each may know besides itself. What a known folder knows is known too.
LAYERS = {
    "Platform": [],
    "Core": [],  # every file of Core stands in one of the folders below
    "Core/Models": ["Platform"],
    "Core/Networking": ["Core/Models"],
    "Core/DataSources": ["Core/Networking"],
    "Core/Persistence": ["Core/Models"],
    "Core/Location": ["Core/Models"],
    "Core/Notifications": ["Core/Models", "Core/Location"],
    "Core/Repositories": ["Core/DataSources", "Core/Persistence", "Core/Notifications", "Core/Location"],
    "Core/ViewModels": ["Core/Repositories"],
    "iOS/Shared": ["Core/ViewModels"],
    "iOS/*": ["iOS/Shared"],  # one screen does not know another
    "iOS": ["iOS/*"],
    "macOS": ["iOS"],
    "": ["macOS"],  # main and the application
}
WINDOW_HEADER = re.compile(r"^(Qt(Qml|Quick|DBus|Widgets)|QQml|QQuick|qqml|QDBus|QJS|QWidget|QApplication|QMessageBox)")


def layer(path):
    """The entry of LAYERS that holds `path`, which is relative to src/."""
    folder = path.rpartition("/")[0]
    while folder not in LAYERS:
        if folder.startswith("iOS/") and folder.count("/") == 1:
            return "iOS/*"
        folder = folder.rpartition("/")[0]
    return folder


def knows(user, used):
    return user == used or any(knows(known, used) for known in LAYERS[user])


def screen(path):
    """The folder of a screen, such as iOS/Mapa."""
    return "/".join(path.split("/")[:2])


def includes(path, text):
    """Each layer includes only what it may know, by paths rooted at src/."""
    faults = []
    for mark, name in re.findall(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', text, re.MULTILINE):
        own = mark == '"' and name != pathlib.Path(path).stem + ".moc"
        if path.startswith("src/Core/") and WINDOW_HEADER.match(name):
            faults.append(f"Core includes <{name}>")
        if mark == "<" and name.startswith(("Core/", "Platform/", "iOS/", "macOS/")):
            faults.append(f'<{name}> is ours: write "{name}"')
        if not own:
            continue
        roots = ["src"] if path.startswith("src/") else ["src", "tests", "demo", path.rpartition("/")[0]]
        if not any((ROOT / root / name).is_file() for root in roots):
            faults.append(f'"{name}" is no path below {", ".join(roots)}')
        elif path.startswith("src/"):
            faults += forbidden(path.removeprefix("src/"), name)
    return faults


def first(path, text):
    """A source includes its own header first, which shows that the header needs nothing before it."""
    header = path.removesuffix(".cpp") + ".h"
    if not (path.startswith("src/") and path.endswith(".cpp") and (ROOT / header).is_file()):
        return []
    own = f'#include "{header.removeprefix("src/")}"'
    found = re.search(r"^#include.*$", text, re.MULTILINE)
    return [f"{own} must be its first include"] if not found or found.group() != own else []


def imports(path, text):
    """The same for the modules that a QML file imports."""
    if not (path.startswith("src/") and path.endswith(".qml")):
        return []
    used = re.findall(r"^import (orvalia\.\w+)", text, re.MULTILINE)
    return [fault for uri in used for fault in forbidden(path.removeprefix("src/"), modules().get(uri, uri) + "/")]


@functools.cache
def modules():
    """Where below src/ each QML module lies."""
    declarations = [(path, path.read_text()) for path in (ROOT / "src").rglob("CMakeLists.txt")]
    return {uri: str(path.parent.relative_to(ROOT / "src")) for path, text in declarations
            for uri in re.findall(r"orvalia_qml_module\(\w+\s+([\w.]+)", text)}


def forbidden(user, used):
    """What is wrong when a file knows another; both paths are relative to src/."""
    here, there = layer(user), layer(used)
    strangers = here == there == "iOS/*" and screen(user) != screen(used)
    return [f"{screen(user)} must not know {used}"] if strangers or not knows(here, there) else []


def licence(path, text):
    """Every source says its licence at its top."""
    name = pathlib.Path(path).name
    source = pathlib.Path(path).suffix in CODE | {".cmake"} or name == "CMakeLists.txt" or text.startswith("#!")
    said = "SPDX-License-Identifier: GPL-3.0-or-later" in "\n".join(text.splitlines()[:3])
    return ["no SPDX line at the top"] if source and not said else []


# Written so that no expression matches itself.
WORDS = [
    (r"\b(TO[D]O|FIX[M]E|XX[X])\b", "a mark of unfinished work"),
    (r"(?i)\bspeci[f]ication\b|\bspec\.m[d]\b|\bParts? [0-9]\.[0-9]", "names a document outside the tree"),
    (r"(?i)\bas (requi[r]ed|to[l]d|speci[f]ied)\b|\bthe ori[g]inal\b", "names a document outside the tree"),
    (r"/wor[k]/|/hom[e]/\w|/roo[t]/", "names a folder of one machine"),
]


def words(path, text):
    """The tree speaks of nothing that is not in it, and is finished."""
    if path == "LICENSE":  # not our words
        return []
    return [f"'{match.group()}': {why}" for pattern, why in WORDS for match in re.finditer(pattern, text)]


# The templates of controls, imported as T, show no text by themselves; the menus imported as Desktop are the desktop's.
RAW_CONTROL = re.compile(
    r"^[^/\n\"]*?\b(?<!\bT\.)(?<!\bDesktop\.)(Text|TextEdit|TextInput|TextField|TextArea|Label|ToolTip|Button|ToolButton|RoundButton|TabButton"
    r"|ItemDelegate|CheckBox|RadioButton|Switch|MenuItem|GroupBox|ComboBox|SpinBox|Slider|Dialog)\s*\{", re.MULTILINE)


def qml(path, text):
    """Screens take colours from Theme and controls, which show plain text alone, from iOS/Shared."""
    if not path.endswith(".qml") or path.endswith("/Theme.qml") or not path.startswith(("src/", "demo/")):
        return []
    faults = [f"colour {colour}: belongs into Theme" for colour in re.findall(r'"(#[0-9a-fA-F]{3,8})"', text)]
    if path.startswith("src/iOS/Shared/"):
        return faults
    faults += [f"raw {control}: use the control of iOS/Shared" for control in RAW_CONTROL.findall(text)]
    faults += [f"{call}: belongs into Theme" for call in re.findall(r"\bQt\.(?:rgba|hsla|hsva)\(", text)]
    return faults


def futures(path, text):
    """Qt 6.4 aborts on a continuation whose context has died: objects consume futures by whenFinished() alone."""
    if not path.startswith(("src/", "demo/")) or path.endswith("/Async.h") or not path.endswith((".h", ".cpp")):
        return []
    calls = re.findall(r"\.\s*(then|onFailed|onCanceled)\(\s*(?!\[|QtFuture::)[^,()\[]+,", text)
    return [f"{call}() with a context: use whenFinished()" for call in calls]


def bus(path, text):
    """Nothing waits for an answer over the bus, which may be long in coming; the start alone does, before any window."""
    if not path.startswith("src/") or path.endswith("/FirstInstance.cpp"):
        return []
    waits = re.findall(r"\.call\(|\bQDBusInterface\b|\bQDBusReply\b|[bB]us\.interface\(\)|\bwaitForFinished\(", text)
    return [f"{wait} waits: use callAsync()" for wait in waits]


RULES = {rule.__name__: rule for rule in (includes, first, imports, licence, words, qml, futures, bus)}


def files():
    """Every file of the tree, without what is built or belongs to the version control."""
    for top in sorted(ROOT.iterdir()):
        if top.name == ".git" or top.name.startswith("build") or top.name == "tour":
            continue
        for path in sorted(top.rglob("*")) if top.is_dir() else [top]:
            if path.is_file() and "__pycache__" not in path.parts:
                yield path


def main(name):
    faults = 0
    for path in files():
        try:
            text = path.read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue  # pictures
        relative = str(path.relative_to(ROOT))
        for fault in RULES[name](relative, text):
            print(f"{relative}: {fault}")
            faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
