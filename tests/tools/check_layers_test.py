#!/usr/bin/env python3
"""Runs tools/check-layers over small made-up trees."""

import pathlib
import subprocess
import tempfile
import unittest

CHECK_LAYERS = pathlib.Path(__file__).resolve().parents[2] / "tools" / "check-layers"

# What the tree shows, its files with the includes of each, and what check-layers prints. An include
# that starts with neither " nor < is a line as it stands.
TREES = [
    (
        "what breaks the layers",
        {
            "attic/Thing.h": [],
            "base/Code.cpp": ['"tests/fixtures/Scratch.h"'],
            "base/Low.h": ["", '  #  include "library/High.h"'],
            "base/Lower.h": ["<library/High.h>"],
            "drivers/folder/driver.cpp": ['"platform/Path.h"'],
            "library/High.h": ['"High.h"'],
            "phone/Link.h": [],
            "platform/Path.h": [],
            "player/Player.cpp": ['"phone/Link.h"'],
            "tests/fixtures/Scratch.h": [],
        },
        """\
attic/Thing.h:1: its folder stands on no floor
base/Code.cpp:1: "tests/fixtures/Scratch.h": the program does not include tests/
base/Low.h:2: "library/High.h": looks up from base/ to library/
base/Lower.h:1: "library/High.h": looks up from base/ to library/
drivers/folder/driver.cpp:1: "platform/Path.h": a driver includes phone/driver_api.h only
library/High.h:1: "High.h": no such file (includes are written from the top of the tree)
player/Player.cpp:1: "phone/Link.h": looks sideways from player/ to phone/
""",
    ),
    (
        "circles, each once, and not the file that leads to one",
        {
            "skin/A.h": ['"skin/B.h"'],
            "skin/B.h": ['"skin/C.h"', '"skin/D.h"'],
            "skin/C.h": ['"skin/D.h"', '"skin/B.h"'],
            "skin/D.h": [],
            "tags/A.h": [],
            "tags/A.cpp": ['"tags/A.h"', '"tags/B.h"'],
            "tags/B.h": [],
            "tags/B.cpp": ['"tags/B.h"', '"tags/A.h"'],
            "tags/BMore.cpp": ['"tags/B.h"'],
        },
        "circle: skin/B -> skin/C -> skin/B\ncircle: tags/A -> tags/B -> tags/A\n",
    ),
]


def run_on(files):
    """The exit status and what check-layers prints for a tree of these files."""
    with tempfile.TemporaryDirectory(prefix="trackdeck-test-") as tree:
        for name, includes in files.items():
            path = pathlib.Path(tree, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            lines = [f"#include {line}" if line[:1] in ('"', "<") else line for line in includes]
            path.write_text("".join(f"{line}\n" for line in lines), encoding="utf-8")
        result = subprocess.run([CHECK_LAYERS, tree], capture_output=True, text=True, check=False)
    return result.returncode, result.stdout, result.stderr


class CheckLayers(unittest.TestCase):
    def test_trees(self):
        for name, files, complaints in TREES:
            with self.subTest(name):
                self.assertEqual(run_on(files), (1, complaints, ""))


if __name__ == "__main__":
    unittest.main()
