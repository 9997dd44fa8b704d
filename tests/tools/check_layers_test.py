#!/usr/bin/env python3
"""Runs tools/check-layers over small made-up trees."""

import os
import subprocess
import sys
import tempfile
import unittest

CHECK_LAYERS = os.path.join(os.path.dirname(__file__), "..", "..", "tools", "check-layers")

# What the tree shows, its files with the includes of each, and what is said of it.
TREES = [
    (
        "looking down and at home",
        {
            "platform/Path.h": ["<string>"],
            "base/Settings.h": ['"platform/Path.h"'],
            "base/Settings.cpp": ['"base/Settings.h"', "<QString>", '"Settings.moc"'],
            "app/main.cpp": ['"base/Settings.h"', '"platform/Path.h"'],
        },
        [],
    ),
    (
        "tests, bench and tools look anywhere",
        {
            "app/Dialog.h": [],
            "tests/fixtures/Scratch.h": [],
            "tests/app/DialogTest.cpp": ['"app/Dialog.h"', '"tests/fixtures/Scratch.h"'],
            "bench/bench_start.cpp": ['"app/Dialog.h"'],
            "tools/tagdump/main.cpp": ['"app/Dialog.h"'],
        },
        [],
    ),
    (
        "build products and hidden folders are passed over",
        {"build/app/moc.cpp": ['"gone.h"'], ".old/platform/Path.h": ['"gone.h"']},
        [],
    ),
    (
        "up",
        {"base/Low.h": ["", '  #  include "library/High.h"'], "library/High.h": []},
        ['base/Low.h:2: "library/High.h": looks up from base/ to library/'],
    ),
    (
        "up in angle brackets",
        {"base/Low.h": ["<library/High.h>"], "library/High.h": []},
        ['base/Low.h:1: "library/High.h": looks up from base/ to library/'],
    ),
    (
        "sideways",
        {"player/Player.cpp": ['"phone/Link.h"'], "phone/Link.h": []},
        ['player/Player.cpp:1: "phone/Link.h": looks sideways from player/ to phone/'],
    ),
    (
        "not from the top of the tree",
        {"grid/Cell.cpp": ['"Cell.h"'], "grid/Cell.h": []},
        ['grid/Cell.cpp:1: "Cell.h": no such file (includes are written from the top of the tree)'],
    ),
    (
        "the program and its tests",
        {"base/Code.cpp": ['"tests/fixtures/Scratch.h"'], "tests/fixtures/Scratch.h": []},
        ['base/Code.cpp:1: "tests/fixtures/Scratch.h": the program does not include tests/'],
    ),
    (
        "drivers",
        {
            "phone/driver_api.h": [],
            "platform/Path.h": [],
            "drivers/folder/Copy.h": [],
            "drivers/folder/driver.cpp": [
                '"phone/driver_api.h"',
                '"drivers/folder/Copy.h"',
                '"platform/Path.h"',
            ],
        },
        [
            'drivers/folder/driver.cpp:3: "platform/Path.h": '
            "a driver includes phone/driver_api.h only"
        ],
    ),
    (
        "a folder without a floor",
        {"attic/Thing.h": []},
        ["attic/Thing.h:1: its folder stands on no floor"],
    ),
    (
        "a cycle, once, and not the file that leads to it",
        {
            "grid/A.h": ['"grid/B.h"'],
            "grid/B.h": ['"grid/C.h"', '"grid/D.h"'],
            "grid/C.h": ['"grid/D.h"', '"grid/B.h"'],
            "grid/D.h": [],
        },
        ["grid/B.h:1: includes itself: grid/B.h -> grid/C.h -> grid/B.h"],
    ),
]


def run_on(files):
    """The exit status and the lines that check-layers prints for a tree of these files."""
    with tempfile.TemporaryDirectory(prefix="trackdeck-test-") as tree:
        for path, includes in files.items():
            os.makedirs(os.path.join(tree, os.path.dirname(path)), exist_ok=True)
            with open(os.path.join(tree, path), "w", encoding="utf-8") as stream:
                for include in includes:
                    plain = include[:1] in ('"', "<")
                    stream.write((f"#include {include}" if plain else include) + "\n")
        result = subprocess.run(
            [sys.executable, CHECK_LAYERS, tree], capture_output=True, text=True, check=False
        )
    return result.returncode, result.stdout.splitlines(), result.stderr


class CheckLayers(unittest.TestCase):
    def test_trees(self):
        for name, files, complaints in TREES:
            with self.subTest(name):
                expected = (1, complaints, "") if complaints else (0, ["The layers hold."], "")
                self.assertEqual(run_on(files), expected)


if __name__ == "__main__":
    unittest.main()
