#!/usr/bin/env python3
"""Moves, sizes, maximizes, minimizes and shrinks the program's window by its frame, with a real
window manager at 200 %, and holds the window's geometry to what each of these means.

Usage: frame_walk.py PROGRAM
"""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from screen import Screen, StepFailed, take_walk, wait_for
from trackdeck import TrackDeck

PROGRAM = pathlib.Path(sys.argv[1]).resolve()
SCALE = 2


def scaled(*lengths):
    return tuple(length * SCALE for length in lengths)


SCREEN = scaled(*TrackDeck.SCREEN)
SMALLEST = scaled(640, 480)
MINI_SIZE = scaled(*TrackDeck.MINI_SIZE)
STEP = 40 * SCALE
CAPTION = scaled(200, 16)

# Middles of the frame's buttons: from the window's right edge, and from its top.
CLOSE, MAXIMIZE, MINIMIZE = (scaled(right, 15) for right in (21, 47, 73))
TO_MINI, TO_NORMAL = (scaled(right, 15) for right in (109, 58))

# Edges and corners: -1 is left or top, 1 right or bottom, 0 neither of them.
GRIPS = [(-1, 0), (1, 0), (0, -1), (0, 1), (-1, -1), (1, -1), (-1, 1), (1, 1)]


def grip(size, x, y):
    """Where a window of this size is taken hold of. Its upper corners are round."""
    width, height = size
    top = 12 if x else 1
    return {-1: 1, 0: width // 3, 1: width - 2}[x], {-1: top, 0: height // 2, 1: height - 2}[y]


class Walk:
    def __init__(self, cleanup, scratch, _home):
        self.screen = Screen(cleanup, scratch, SCREEN)
        self.deck = TrackDeck(PROGRAM, self.screen, cleanup, SCALE)

    def geometry(self):
        return self.screen.geometry(self.deck.window)

    def click_button(self, button):
        (width, _), _ = self.geometry()
        self.screen.click(self.deck.window, (width - button[0], button[1]))

    def settled(self, before):
        """The geometry once it is another one than `before`, and rests."""
        self.screen.pull((4 * SCALE, 4 * SCALE))
        deadline = time.monotonic() + 2
        last = before
        while time.monotonic() < deadline:
            time.sleep(0.2)
            now = self.geometry()
            if now == last != before:
                return now
            last = now
        return None

    def drag(self, point, way):
        """Takes a point of the window along, by `way`. Returns the geometry from which this goes:
        where the mouse is when the window manager takes over, nobody can tell in advance."""
        before = self.geometry()
        self.screen.point(self.deck.window, point)
        self.screen.hold()
        start = wait_for(lambda: self.settled(before), "the drag to begin")
        self.screen.pull(way)
        self.screen.let_go(self.deck.window)
        return start

    def drag_in_vain(self, point):
        self.screen.point(self.deck.window, point)
        self.screen.hold()
        self.screen.pull((STEP, STEP))
        self.screen.let_go(self.deck.window)

    def double_click_caption(self):
        self.screen.click(self.deck.window, CAPTION, times=2)

    def program_starts(self):
        self.deck.start()
        size = scaled(768, 576)
        self.deck.wait_for_geometry(size, tuple((s - w) // 2 for s, w in zip(SCREEN, size)))

    def caption_moves(self):
        size, (left, top) = self.drag(CAPTION, (STEP, -STEP))
        self.deck.wait_for_geometry(size, (left + STEP, top - STEP))

    def edges_and_corners_size(self):
        step = -STEP
        for x, y in GRIPS:
            (w, h), (left, top) = self.drag(grip(self.geometry()[0], x, y), (step, step))
            try:
                self.deck.wait_for_geometry(
                    (w + step * x, h + step * y), (left + step * (x < 0), top + step * (y < 0))
                )
            except StepFailed as failure:
                raise StepFailed(f"{x}, {y}: {failure}") from None
            step = -step

    def smallest_size_holds(self):
        size, place = self.geometry()
        self.drag(grip(size, 1, 1), scaled(-400, -400))
        self.deck.wait_for_geometry(SMALLEST, place)

    def maximizes(self):
        for toggle in (self.double_click_caption, lambda: self.click_button(MAXIMIZE)):
            before = self.geometry()
            toggle()
            self.deck.wait_for_geometry(SCREEN, (0, 0))
            self.drag_in_vain(CAPTION)
            self.drag_in_vain((1, SCREEN[1] // 2))
            self.deck.wait_for_geometry(SCREEN, (0, 0))
            toggle()
            self.deck.wait_for_geometry(*before)

    def minimizes_and_comes_back(self):
        before = self.geometry()
        self.click_button(MINIMIZE)
        self.deck.wait_until_gone("IDS_MAIN_TITLE")
        self.screen.activate(self.deck.window)
        self.deck.wait_for_window("IDS_MAIN_TITLE")
        self.deck.wait_for_geometry(*before)

    def mini_player_comes_and_goes(self):
        size, place = self.geometry()
        self.click_button(TO_MINI)
        mini_place = (10 * SCALE, SCREEN[1] - 100 * SCALE)
        self.deck.wait_for_geometry(MINI_SIZE, mini_place)
        self.drag_in_vain((MINI_SIZE[0] - 2, 40 * SCALE))
        self.double_click_caption()
        self.deck.wait_for_geometry(MINI_SIZE, mini_place)
        _, (left, top) = self.drag(CAPTION, (STEP, -STEP))
        self.deck.wait_for_geometry(MINI_SIZE, (left + STEP, top - STEP))
        self.click_button(TO_NORMAL)
        self.deck.wait_for_geometry(size, place)

    def close_button_ends(self):
        self.click_button(CLOSE)
        self.deck.wait_until_ended()

    STEPS = [
        (program_starts, "the window comes up in the middle of the screen"),
        (caption_moves, "the caption moves it"),
        (edges_and_corners_size, "edges and corners size it"),
        (smallest_size_holds, "it gets no smaller than it may"),
        (minimizes_and_comes_back, "the button minimizes it, and it comes back"),
        (maximizes, "a double click and the button maximize and restore it"),
        (mini_player_comes_and_goes, "the mini player comes, is moved, and goes"),
        (close_button_ends, "the close button ends the program"),
    ]


if __name__ == "__main__":
    sys.exit(take_walk(Walk, PROGRAM, SCALE))
