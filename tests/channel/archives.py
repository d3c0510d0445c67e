#!/usr/bin/env python3
"""Archives that no archiver would write, one a line: NAME, a tab, what reading says, a tab, the archive in hex.

Each is given by its objects from number 1 on; number 1 is the root.
"""
import plistlib

UID = plistlib.UID


def instance(number, **fields):
    return {"$class": UID(number), **{key.replace("__", "."): value for key, value in fields.items()}}


def array(number, *parts):
    return instance(number, NS__objects=[UID(part) for part in parts])


def described(name):
    return {"$classname": name, "$classes": [name, "NSObject"]}


def chain(depth):
    """Arrays within each other; the root also holds the second one directly, after a longer way."""
    return [array(2, depth + 1, 3), ARRAY, *(array(2, i + 1) for i in range(3, depth + 1)), array(2)]


ARRAY = described("NSArray")
DAMAGED = "the archive is damaged"
NO_VALUE = "the archive holds an object that is no value"
LARGE = [array(2, *range(5, 65)), ARRAY, described("NSString"), "x" * (1 << 20),
         *(instance(3, NS__string=UID(4)) for _ in range(60))]
OFTEN = array(2, *([0] * 500))
ARCHIVES = {
    "cycle of one": ("the archive holds a cycle", [array(2, 1), ARRAY]),
    "cycle of two": ("the archive holds a cycle", [array(2, 3), ARRAY, array(2, 1)]),
    "part out of range": (DAMAGED, [array(2, 9), ARRAY]),
    "class out of range": (DAMAGED, [array(9)]),
    "class is a text": (DAMAGED, [array(2), "NSArray"]),
    "array without parts": (DAMAGED, [instance(2), ARRAY]),
    "text object without text": (DAMAGED, [array(2, 3), ARRAY, instance(4), described("NSString")]),
    "foreign class": ("class NSDate is not permitted", [array(2, 3), ARRAY, instance(4), described("NSDate")]),
    "foreign class that nothing uses": ("class NSTask is not permitted", [array(2), ARRAY, described("NSTask")]),
    "class as a value": (NO_VALUE, [array(2, 2), ARRAY]),
    "data as a value": (NO_VALUE, [array(2, 3), ARRAY, b"x"]),
    "number in a row": ("a field of a row is no text", [instance(2, name=UID(3)), described("NameAndRecNumber"), 1]),
    "as deep as can be": ("good", chain(64)),
    "too deep on one of two ways": ("the archive is nested too deep", chain(65)),
    "shared two to the power of 62": ("good", [*(array(65, i + 1, i + 1) for i in range(1, 64)), "leaf", ARRAY]),
    "a megabyte, sixty times": ("the archive is too large", LARGE),
    "one array under 500 numbers": ("the objects of the archive overlap", [OFTEN, ARRAY, *([OFTEN] * 500)]),
}

for name, (outcome, objects) in ARCHIVES.items():
    top = {"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {"root": UID(1)}, "$objects": ["$null", *objects]}
    print(name, outcome, plistlib.dumps(top, fmt=plistlib.FMT_BINARY).hex(), sep="\t")
