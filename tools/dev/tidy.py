#!/usr/bin/env python3
"""Runs clang-tidy over the sources of a build and remembers what was clean.

    tools/dev/tidy.py BUILD-FOLDER

A source is read again only when it, a project header that it can reach, or the configuration has
changed: the result is kept under a digest of these.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.M)
PRECOMPILED = re.compile(r"-include (\S+/cmake_pch\.hxx)")


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


def digest(source: pathlib.Path, headers: dict[str, pathlib.Path]) -> str:
    files: set[pathlib.Path] = {ROOT / ".clang-tidy"}
    reach(source, headers, files)
    total = hashlib.sha256()
    for path in sorted(files):
        total.update(str(path.relative_to(ROOT)).encode())
        total.update(path.read_bytes())
    return total.hexdigest()


def write_commands(build: pathlib.Path, folder: pathlib.Path) -> list[dict]:
    """The build's commands with the precompiled headers as plain headers: clang cannot read those of gcc."""
    commands = json.loads((build / "compile_commands.json").read_text())
    for command in commands:
        header = PRECOMPILED.search(command["command"])
        if header:
            plain = folder / str(pathlib.Path(header[1]).relative_to(build)).replace("/", "_")
            plain.write_text(pathlib.Path(header[1]).read_text())
            command["command"] = command["command"].replace(header[1], str(plain))
    (folder / "compile_commands.json").write_text(json.dumps(commands))
    return commands


def main() -> int:
    build = pathlib.Path(sys.argv[1]).resolve()
    kept = build / "tidy"
    kept.mkdir(exist_ok=True)
    headers = project_headers()
    sources = sorted({pathlib.Path(entry["file"]) for entry in write_commands(build, kept)})
    sources = [source for source in sources
               if source.is_relative_to(ROOT / "src") and not source.is_relative_to(build)]
    waiting = [(source, kept / digest(source, headers)) for source in sources]
    waiting = [(source, mark) for source, mark in waiting if not mark.exists()]

    def read(source: pathlib.Path) -> subprocess.CompletedProcess:
        return subprocess.run(["clang-tidy", "--quiet", "-p", str(kept), "--extra-arg=-Wno-everything", str(source)],
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
