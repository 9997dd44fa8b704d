#!/usr/bin/env python3
"""Moves, sizes, maximizes, minimizes and shrinks the program's window by its frame, with a real
window manager at 200 %, and holds the window's geometry to what each of these means.

Usage: frame_walk.py PROGRAM
"""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from screen import StepFailed, wait_for
from trackdeck import TrackDeck, Walk

SCALE = 2


def scaled(*lengths):
    return tuple(length * SCALE for length in lengths)


SCREEN = scaled(*TrackDeck.SCREEN)
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


class FrameWalk(Walk):
    SCALE = SCALE

    def _geometry(self):
        return self.screen.geometry(self.deck.window)

    def _click_button(self, button):
        (width, _), _ = self._geometry()
        self.screen.click(self.deck.window, (width - button[0], button[1]))

    def _settled(self, before):
        """The geometry once it is another one than `before`, and rests."""
        self.screen.pull((4 * SCALE, 4 * SCALE))
        deadline = time.monotonic() + 2
        last = before
        while time.monotonic() < deadline:
            time.sleep(0.2)
            now = self._geometry()
            if now == last != before:
                return now
            last = now
        return None

    def _drag(self, point, way, in_vain=False):
        """Takes a point of the window along, by `way`. Returns the geometry from which this goes:
        where the mouse is when the window manager takes over, nobody can tell in advance."""
        start = before = self._geometry()
        self.screen.point(self.deck.window, point)
        self.screen.hold()
        if not in_vain:
            start = wait_for(lambda: self._settled(before), "the drag to begin")
        self.screen.pull(way)
        self.screen.let_go(self.deck.window)
        return start

    def _double_click_caption(self):
        self.screen.click(self.deck.window, CAPTION, times=2)

    def window_comes_up_in_the_middle_of_the_screen(self):
        self.deck.start()
        size = scaled(768, 576)
        self.deck.wait_for_geometry(size, tuple((s - w) // 2 for s, w in zip(SCREEN, size)))

    def caption_moves_it(self):
        size, (left, top) = self._drag(CAPTION, (STEP, -STEP))
        self.deck.wait_for_geometry(size, (left + STEP, top - STEP))

    def edges_and_corners_size_it(self):
        step = -STEP
        for x, y in GRIPS:
            (w, h), (left, top) = self._drag(grip(self._geometry()[0], x, y), (step, step))
            try:
                self.deck.wait_for_geometry(
                    (w + step * x, h + step * y), (left + step * (x < 0), top + step * (y < 0))
                )
            except StepFailed as failure:
                raise StepFailed(f"{x}, {y}: {failure}") from None
            step = -step

    def it_gets_no_smaller_than_it_may(self):
        size, place = self._geometry()
        self._drag(grip(size, 1, 1), scaled(-400, -400))
        self.deck.wait_for_geometry(scaled(640, 480), place)

    def button_minimizes_it_and_it_comes_back(self):
        before = self._geometry()
        self._click_button(MINIMIZE)
        self.deck.wait_until_gone("IDS_MAIN_TITLE")
        self.screen.activate(self.deck.window)
        self.deck.wait_for_window("IDS_MAIN_TITLE")
        self.deck.wait_for_geometry(*before)

    def double_click_and_button_maximize_and_restore_it(self):
        for toggle in (self._double_click_caption, lambda: self._click_button(MAXIMIZE)):
            before = self._geometry()
            toggle()
            self.deck.wait_for_geometry(SCREEN, (0, 0))
            for point in (CAPTION, (1, SCREEN[1] // 2)):
                self._drag(point, (STEP, STEP), in_vain=True)
            self.deck.wait_for_geometry(SCREEN, (0, 0))
            toggle()
            self.deck.wait_for_geometry(*before)

    def mini_player_comes_is_moved_and_goes(self):
        before = self._geometry()
        self._click_button(TO_MINI)
        mini_place = (10 * SCALE, SCREEN[1] - 100 * SCALE)
        self.deck.wait_for_geometry(MINI_SIZE, mini_place)
        self._drag((MINI_SIZE[0] - 2, 40 * SCALE), (STEP, STEP), in_vain=True)
        self._double_click_caption()
        self.deck.wait_for_geometry(MINI_SIZE, mini_place)
        _, (left, top) = self._drag(CAPTION, (STEP, -STEP))
        self.deck.wait_for_geometry(MINI_SIZE, (left + STEP, top - STEP))
        self._click_button(TO_NORMAL)
        self.deck.wait_for_geometry(*before)

    def close_button_ends_the_program(self):
        self._click_button(CLOSE)
        self.deck.wait_until_ended()


if __name__ == "__main__":
    sys.exit(FrameWalk.take())
