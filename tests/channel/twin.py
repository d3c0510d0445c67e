#!/usr/bin/env python3
"""A second implementation of the archives, with plistlib, for the tests and as a source of seeds for the fuzzer.

Reads an archive in hex from its standard input and prints what it says as JSON, and an archive that says the same in
every other spelling that the layout allows. In JSON a record is {"name", "id", "parent"} and a nil is null.
"""
import json
import plistlib
import random
import sys

UID = plistlib.UID


class Archiver:
    def __init__(self, foreign=False):
        self.objects = ["$null"]
        self.foreign = foreign
        self.texts = {}
        self.classes = {}
        self.random = random.Random(1)

    def put(self, value):
        self.objects.append(value)
        return UID(len(self.objects) - 1)

    def describe(self, name, *bases):
        if self.foreign and name == "NSArray":
            name, bases = "NSMutableArray", ("NSArray",)
        if name not in self.classes:
            self.classes[name] = self.put({"$classname": name, "$classes": [name, *bases, "NSObject"]})
        return self.classes[name]

    def dictionary(self, **pairs):
        items = [(key.replace("__", "."), value) for key, value in pairs.items()]
        if self.foreign:
            items.append(("futureKey", UID(0)))
            self.random.shuffle(items)
        return {("$class" if key == "cls" else key): value for key, value in items}

    def add(self, value):
        if isinstance(value, str):
            return self.add_text(value)
        if isinstance(value, (bool, int, float)):
            return self.put(value)
        if value is None:
            return self.put(self.dictionary(cls=self.describe("IPCNilArg")))
        place = self.put(None)
        if isinstance(value, list):
            parts = [self.add(part) for part in value]
            filled = self.dictionary(NS__objects=parts, cls=self.describe("NSArray"))
        else:
            field = lambda key: UID(0) if value.get(key) is None else self.add_text(value[key])
            filled = self.dictionary(name=field("name"), vtObjectID=field("id"), parentObjectID=field("parent"),
                                     cls=self.describe("NameAndRecNumber"))
        self.objects[place.data] = filled
        return place

    def add_text(self, text):
        if self.foreign:  # unshared, plain and as an object in turn
            self.texts[text] = self.texts.get(text, 0) + 1
            if self.texts[text] % 2 == 0:
                return self.put(text)
            return self.put({"NS.string": text, "$class": self.describe("NSMutableString", "NSString")})
        if text not in self.texts:
            self.texts[text] = self.put(text)
        return self.texts[text]

    def finish(self, value):
        root = self.add(value)
        top = {"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": {"root": root}, "$objects": self.objects}
        return plistlib.dumps(top, fmt=plistlib.FMT_BINARY, sort_keys=not self.foreign)


def decoded(data):
    top = plistlib.loads(data, fmt=plistlib.FMT_BINARY)
    assert top["$version"] == 100000 and top["$archiver"] == "NSKeyedArchiver", top
    objects = top["$objects"]
    assert objects[0] == "$null"
    plain = [item for item in objects if isinstance(item, str)]
    assert len(plain) == len(set(plain)), "equal texts stand more than once"

    def value(uid):
        item = objects[uid.data]
        if uid.data == 0:
            return None
        if not isinstance(item, dict):
            return item
        described = objects[item["$class"].data]
        name = described["$classname"]
        assert described["$classes"] == [name, "NSObject"], described
        if name == "NSArray":
            return [value(part) for part in item["NS.objects"]]
        if name == "IPCNilArg":
            assert set(item) == {"$class"}, item
            return None
        assert name == "NameAndRecNumber", name
        return {"name": value(item["name"]), "id": value(item["vtObjectID"]), "parent": value(item["parentObjectID"])}

    return value(top["$top"]["root"])


if __name__ == "__main__":
    message = decoded(bytes.fromhex(sys.stdin.read()))
    print(json.dumps(message))
    print(Archiver(foreign=True).finish(message).hex())
