#!/usr/bin/env python3
"""Runs clang-tidy over the sources of a build and remembers what was clean.

    tools/dev/tidy.py BUILD-FOLDER [--quick]

--quick leaves out what takes longest and finds least. A source is read again only when it, a project header that it
can reach, or the configuration has changed: the result is kept in the build's folder under a digest of these.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)
PRECOMPILED = re.compile(r"-include (\S+/cmake_pch\.hxx)")
QUICK = ",".join((
    "-*", "performance-*", "-performance-no-int-to-ptr", "-performance-enum-size", "misc-unused-parameters",
    "modernize-use-override", "modernize-make-unique", "readability-container-size-empty",
    "readability-redundant-smartptr-get", "bugprone-use-after-move", "bugprone-dangling-handle",
    "bugprone-unused-raii", "bugprone-infinite-loop", "bugprone-misplaced-widening-cast",
    "bugprone-incorrect-roundings", "bugprone-virtual-near-miss", "bugprone-parent-virtual-call",
    "bugprone-copy-constructor-init", "bugprone-string-constructor", "bugprone-sizeof-expression"))


def project_headers() -> dict[str, pathlib.Path]:
    """Every published header under the name by which it is included."""
    return {str(path.relative_to(folder)): path
            for folder in ROOT.glob("src/**/include") for path in folder.rglob("*.h")}


def reach(source: pathlib.Path, headers: dict[str, pathlib.Path], seen: set[pathlib.Path]) -> None:
    if source in seen:
        return
    seen.add(source)
    for name in INCLUDE.findall(source.read_text(errors="replace")):
        header = headers.get(name) or (source.parent / name if (source.parent / name).is_file() else None)
        if header:
            reach(header, headers, seen)


def digest(source: pathlib.Path, headers: dict[str, pathlib.Path], checks: list[str]) -> str:
    files: set[pathlib.Path] = {ROOT / ".clang-tidy"}
    reach(source, headers, files)
    total = hashlib.sha256("".join(checks).encode())
    for path in sorted(files):
        total.update(str(path.relative_to(ROOT)).encode())
        total.update(path.read_bytes())
    return total.hexdigest()


def compile_header(header: str, command: dict, folder: pathlib.Path) -> str:
    """Precompiles a header for clang, which cannot read what gcc made of it, and returns the option to use it."""
    name = folder / hashlib.sha256(header.encode()).hexdigest()[:16]
    plain, compiled = name.with_suffix(".hxx"), name.with_suffix(".pch")
    plain.write_text(pathlib.Path(header).read_text())
    flags = shlex.split(command["command"])[1:]
    flags = flags[:flags.index("-include")] + flags[flags.index("-include") + 2:flags.index("-o")]
    subprocess.run(["clang++", *flags, "-Wno-everything", "-x", "c++-header", str(plain), "-o", str(compiled)],
                   cwd=command["directory"], check=True)
    return f"-include-pch {compiled}"


def write_commands(build: pathlib.Path, folder: pathlib.Path) -> list[dict]:
    """The commands of the build's sources, with precompiled headers that clang can read."""
    commands = json.loads((build / "compile_commands.json").read_text())
    commands = [command for command in commands if pathlib.Path(command["file"]).is_relative_to(ROOT / "src")
                and not pathlib.Path(command["file"]).is_relative_to(build)]
    options: dict[str, str] = {}
    for command in commands:
        command["command"] = command["command"].replace("-fpch-preprocess ", "")
        if header := PRECOMPILED.search(command["command"]):
            if header[1] not in options:
                options[header[1]] = compile_header(header[1], command, folder)
            command["command"] = command["command"].replace(header[0], options[header[1]])
    (folder / "compile_commands.json").write_text(json.dumps(commands))
    return commands


def main() -> int:
    build = pathlib.Path(sys.argv[1]).resolve()
    quick = "--quick" in sys.argv
    kept = build / ("tidy-quick" if quick else "tidy")
    kept.mkdir(exist_ok=True)
    checks = [f"--checks={QUICK}"] if quick else []
    headers = project_headers()
    sources = sorted({pathlib.Path(entry["file"]) for entry in write_commands(build, kept)})
    marks = {source: kept / digest(source, headers, checks) for source in sources}
    waiting = [(source, mark) for source, mark in marks.items() if not mark.exists()]

    def read(source: pathlib.Path) -> subprocess.CompletedProcess:
        return subprocess.run(["clang-tidy", "--quiet", "-p", str(kept), "--extra-arg=-Wno-everything", *checks,
                               str(source)],
                              capture_output=True, text=True, check=False)

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = {pool.submit(read, source): (source, mark) for source, mark in waiting}
        for done in concurrent.futures.as_completed(results):
            source, mark = results[done]
            if done.result().returncode == 0:
                mark.touch()
            else:
                failed += 1
                print(done.result().stdout, done.result().stderr[-2000:], sep="\n")
    print(f"clang-tidy: {len(waiting)} of {len(sources)} sources read, {failed} with findings")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
