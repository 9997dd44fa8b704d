#!/usr/bin/env python3
"""Tests tools/check-contrast on pictures with known colours."""

import os
import subprocess
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(os.path.realpath(__file__)), "../../tools/check-contrast")


class CheckContrast(unittest.TestCase):
    def run_tool(self, *rectangles):
        """Its code and output for a picture of 40 by 20: black, with a white and a grey bar each in
        its half, and a single white pixel beside the grey one."""
        with tempfile.TemporaryDirectory() as folder:
            picture = os.path.join(folder, "picture.png")
            drawing = "fill white rectangle 4,4 6,15 fill #404040 rectangle 24,4 26,15 " \
                      "fill white point 30,4"
            subprocess.run(["/usr/bin/convert", "-size", "40x20", "xc:black", "+antialias",
                            "-draw", drawing, picture], check=True)
            done = subprocess.run([TOOL, picture, *rectangles], text=True, capture_output=True)
            return done.returncode, done.stdout

    def test_measures(self):
        self.assertEqual(self.run_tool("title=0,0,20,20"), (0, "21.00  #ffffff on #000000  title\n"))
        self.assertEqual(self.run_tool("a=0,0,20,20", "grey=20,0,20,20"),
                         (1, "21.00  #ffffff on #000000  a\n 2.03  #404040 on #000000  grey\n"))
        self.assertEqual(self.run_tool("plain=8,0,8,8"), (1, " 1.00  #000000 on #000000  plain\n"))

    def test_refuses_what_is_not_there(self):
        for wrong in ("outside=30,0,20,20", "far=100,100,5,5", "nothing=0,0,0,0", "a=1,2,3", "a=b"):
            self.assertEqual(self.run_tool(wrong), (2, ""), wrong)


if __name__ == "__main__":
    unittest.main()
