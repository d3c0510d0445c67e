#!/usr/bin/env python3
"""Writes the seed corpora: seeds.py FOLDER makes FOLDER/archive and FOLDER/datagrams.

The seeds are what a peer sends, in both spellings; the fuzzer finds its way from there to what none does.
"""
import pathlib
import struct
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "channel"))
import twin  # noqa: E402

MESSAGES = {
    "short": ["companyFileName"],
    "nil": ["companyFileName", None],
    "record": ["submitTime:", "<?xml version=\"1.0\"?><time>ü</time>"],
    "rows": ["getCustomersArray", [{"name": "A", "id": "1"}, {"name": "B", "id": "2", "parent": "1"}]],
    "numbers": ["echo:", 1, -1, 2 ** 40, 0.5, True, [[], [[]]]],
}


def datagrams(archive, reply, slice_size):
    slices = [archive[at:at + slice_size] for at in range(0, len(archive), slice_size)]
    for i, payload in enumerate(slices):
        word = i << 2 | (2 if i == len(slices) - 1 else 0) | reply
        yield struct.pack(">HI", 4 + len(payload), word) + payload


def main(folder):
    for target in ("archive", "datagrams"):
        (folder / target).mkdir(parents=True, exist_ok=True)
    for name, message in MESSAGES.items():
        for foreign in (False, True):
            archive = twin.Archiver(foreign).finish(message)
            spelled = f"{name}-{'foreign' if foreign else 'plain'}"
            (folder / "archive" / spelled).write_bytes(archive)
            for reply in (0, 1):
                run = b"".join(datagrams(archive, reply, 200 if foreign else 30720))
                (folder / "datagrams" / f"{spelled}-{reply}").write_bytes(run)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
