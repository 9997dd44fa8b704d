"""The program as walks meet it: its windows, its texts, and where things stand in them."""

import functools
import inspect
import os
import pathlib
import re
import sys
import tempfile

from screen import Screen, StepFailed, check, new_user, start, take, wait_for

# Dark enough to be text on paper, in shades of grey.
INK = 115


class TrackDeck:
    """The program on a screen. Lengths are those of 100 %; `scaled` makes pixels of them."""

    SCREEN = (1280, 800)
    MINI_SIZE = (400, 89)

    # The grid below the window's frame and menu bar. Row 0 is the header.
    GRID_TOP = 54
    ROW_HEIGHT = 22
    LAST_ROW = 15  # that is seen whole
    CHECK_BOXES = (8, 12)  # left and width of what a column shows
    TITLES = (45, 120)
    ARTISTS = (220, 120)

    # Parts of the window: width, height, left and top.
    MENUS = (400, 240, 0, 0)
    BUTTONS = (200, 103, 4, 469)
    ARTWORK = (84, 84, 672, 478)
    PLAY_GLYPH = (20, 20, 73, 533)
    SEEK_BAR = (390, 16, 166, 535)

    SCAN_BUTTON = (83, 491)
    MOVE_UP_BUTTON = (328, 491)  # of an open playlist
    IN_MID_TRACK = (340, 543)  # on the seek bar
    CAPTION = (400, 15)  # a place that tells and does nothing under a mouse at rest

    def __init__(self, program, screen, cleanup, scale):
        self.program = program
        self.screen = screen
        self.cleanup = cleanup
        self.scale = scale
        self.process = None
        self.window = None
        content = (program.parent / "languages" / "language.lgg").read_text(encoding="utf-8")
        self.texts = dict(re.findall(r"^(\w+)=(.*)$", content, re.MULTILINE))

    def scaled(self, *lengths):
        return tuple(length * self.scale for length in lengths)

    def start(self):
        self.process = start(self.cleanup, [self.program])
        self.window = self.wait_for_window("IDS_MAIN_TITLE")
        self.screen.activate(self.window)

    def wait_until_ended(self):
        wait_for(lambda: self.process.poll() is not None, "the program's end")
        check(self.process.returncode == 0, f"it ended with {self.process.returncode}")

    def find(self, key):
        return self.screen.find(self.texts[key])

    def wait_for_window(self, key):
        return wait_for(lambda: self.find(key), f'the window "{self.texts[key]}"')

    def wait_until_gone(self, key):
        wait_for(lambda: not self.find(key), f'the end of the window "{self.texts[key]}"')

    def open(self, title, *keys):
        """Opens a dialog; the next keys go there."""
        self.screen.press(keys)
        self.screen.activate(self.wait_for_window(title))

    def close(self, title, *keys, under="IDS_MAIN_TITLE"):
        """Closes a dialog; the next keys go to the window under it."""
        self.screen.press(keys)
        self.wait_until_gone(title)
        self.screen.activate(self.find(under))

    def find_prompt(self):
        """A question or a warning, or None: they have the window's own title."""
        return self.screen.find(self.texts["IDS_MAIN_TITLE"], beside=self.window)

    def answer(self, *keys):
        """Answers one question or warning after the other; the next keys go to the window."""
        for key in keys:
            prompt = wait_for(self.find_prompt, "a question")
            self.screen.activate(prompt)
            self.screen.press([key])
            wait_for(lambda: self.find_prompt() != prompt, "the end of the question")
        self.screen.activate(self.window)

    def find_popup(self):
        """A menu or a tip that is open, or None: the program's other windows have titles."""
        return self.screen.find_untitled(self.program.name)

    def wait_for_popup(self):
        return wait_for(self.find_popup, "a menu or a tip")

    def wait_for_no_popup(self):
        wait_for(lambda: not self.find_popup(), "no menu and no tip")

    def wait_for_geometry(self, size=None, place=None):
        """Waits for the window's size and place in pixels of the screen."""

        def near(wanted, now):
            # The program counts in pixels of 100 %.
            return wanted is None or all(abs(a - b) < self.scale for a, b in zip(wanted, now))

        def reached():
            now = self.screen.geometry(self.window)
            return near(size, now[0]) and near(place, now[1])

        try:
            wait_for(reached, f"the window at {size} {place}")
        except StepFailed as failure:
            now = self.screen.geometry(self.window)
            raise StepFailed(f"{failure}; it is at {now}") from None

    def row(self, number, left=150):
        """A point in a row of the grid."""
        return self.scaled(left, self.GRID_TOP + self.ROW_HEIGHT * number + self.ROW_HEIGHT // 2)

    def cells(self, column, first, last):
        """The pixels of the cells of a column from a row to another one."""
        left, width = column
        top = self.GRID_TOP + self.ROW_HEIGHT * first
        height = self.ROW_HEIGHT * (last - first + 1)
        return self.screen.area(self.window, self.scaled(width, height, left, top))

    def has_text(self, column, first, last=None):
        """Whether text stands in the cells."""
        return any(self.ink(column, first, last or first))

    def ink(self, column, first, last):
        """For each row, where ink is in its cell of a column; without the frame of the focus."""
        pixels = zip(*[iter(self.cells(column, first, last))] * 3)
        inked = [max(pixel) < INK for pixel in pixels]
        size = len(inked) // (last - first + 1)
        frame = size // self.ROW_HEIGHT * 3
        places = range(frame, size - frame)
        return [
            {place for place in places if inked[start + place]}
            for start in range(0, len(inked), size)
        ]

    def pixels(self, part):
        """Those of a part of the window: width, height, left and top."""
        return self.screen.area(self.window, self.scaled(*part))

    def artwork(self):
        return self.pixels(self.ARTWORK)

    def play_glyph(self):
        return self.pixels(self.PLAY_GLYPH)

    def seek_bar(self):
        return self.pixels(self.SEEK_BAR)

    @staticmethod
    def check_setting(line):
        """Checks that the program's settings have this line."""
        file = pathlib.Path(os.environ["HOME"]) / ".config" / "Veltria" / "Track Deck.ini"
        lines = file.read_text().splitlines()
        check(line in lines, f"no {line} in {lines}")


class Walk:
    """A walk through the program by a new user. Its steps are the public methods that its class
    defines, in their order; their names tell them."""

    SCALE = 1  # of the desktop

    def __init__(self, program, cleanup, scratch, home):
        self.home = home
        self.screen = Screen(cleanup, scratch, tuple(n * self.SCALE for n in TrackDeck.SCREEN))
        self.deck = TrackDeck(program, self.screen, cleanup, self.SCALE)

    def press(self, *keys):
        self.screen.press(keys)

    @classmethod
    def take(cls):
        """Takes it with the program that the command line names; returns the exit code. The picture
        of a failure lies beside the program's folder."""
        program = pathlib.Path(sys.argv[1]).resolve()
        picture = program.parent.parent / f"{pathlib.Path(sys.argv[0]).stem}-failed.png"
        with tempfile.TemporaryDirectory() as folder:
            home = pathlib.Path(folder) / "home"
            with new_user(home, cls.SCALE) as (cleanup, scratch):
                walk = cls(program, cleanup, scratch, home)
                steps = [
                    (functools.partial(step, walk), name.replace("_", " "))
                    for name, step in vars(cls).items()
                    if inspect.isfunction(step) and not name.startswith("_")
                ]
                return 0 if take(steps, picture) else 1
