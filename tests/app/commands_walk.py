#!/usr/bin/env python3
"""Works with playlists, selections, columns, genres and files by mouse and keyboard, on real music,
and holds the screen, the files and the settings to what each command means.

Usage: commands_walk.py PROGRAM
"""

import os
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from screen import check, output, wait_for, wait_until
from trackdeck import Walk

# Titles in their order, of such lengths that the next column begins where ARTISTS is.
ATTIC, BROOK, CLIFF, DUNES, EMBER, FJORD = TITLES = [
    "Attic Window Singers",
    "Brook below the Mill",
    "Cliff without a Path",
    "Dunes of Last Winter",
    "Ember in a Snowfall",
    "Fjord before Morning",
]
ARTISTS = ["Quarry", "Alder"]  # by turns
PLAYLIST = "Playlist1"

# Where a column begins in rows and header.
CHECK_BOX, TITLE, ARTIST = 14, 100, 205

FIRST_TRACK = 2  # its row in the grid
HEADER = (26, 700)  # left and width

OPEN_ITEM = (40, 39)  # in the menu of a playlist

# A sound with a picture and an ID3v2.3 tag.
ENCODER = """ffmpeg -nostdin -loglevel error -f lavfi -i sine=duration=30
 -f lavfi -i color=orange:size=64x48:duration=1:rate=1 -map 0 -map 1 -c:a libmp3lame -b:a 32k
 -id3v2_version 3 -metadata genre=Blues""".split()


class CommandsWalk(Walk):
    def __init__(self, program, cleanup, scratch, home):
        super().__init__(program, cleanup, scratch, home)
        self.music = home / "Music" / "Veltria Track Deck"
        self.music.mkdir(parents=True)
        for number, title in enumerate(TITLES):
            tags = ["-metadata", f"title={title}", "-metadata", f"artist={ARTISTS[number % 2]}"]
            subprocess.run([*ENCODER, *tags, self._path(title)], check=True)
        self.playlist = self.music / f"{PLAYLIST}.m3u"
        self.opened = scratch / "opened"
        browser = scratch / "bin" / "xdg-open"  # leaves what it is to open
        browser.parent.mkdir()
        browser.write_text(f"#!/bin/sh\nprintf %s \"$1\" >'{self.opened}'\n")
        browser.chmod(0o755)
        os.environ["PATH"] = f"{browser.parent}:{os.environ['PATH']}"
        self.looks = {}  # of titles: where they have ink

    def _path(self, title):
        return self.music / f"{title}.mp3"

    def _learn(self, titles, row):
        """Learns what titles look like, which stand in the rows from `row` on."""
        self.screen.settle()
        looks = self.deck.ink(self.deck.TITLES, row, row + len(titles) - 1)
        self.looks.update(zip(titles, looks))

    def _title_of(self, ink):
        """The title that looks like this, or None. The ground of a row changes the look a little."""
        for title, look in self.looks.items():
            if len(ink ^ look) * 4 < len(look):
                return title
        return None

    def _rows(self):
        """The titles in the rows of the grid, None for others."""
        inks = self.deck.ink(self.deck.TITLES, 0, self.deck.LAST_ROW)
        return [self._title_of(ink) for ink in inks]

    def _shown(self):
        return [title for title in self._rows() if title]

    def _checked(self):
        ticks = self.deck.ink(self.deck.CHECK_BOXES, 0, self.deck.LAST_ROW)
        return [title for title, tick in zip(self._rows(), ticks) if title and tick]

    def _click(self, title, left, button=1):
        rows = self._rows()
        check(title in rows, f"no {title} in {rows}")
        self.screen.click(self.deck.window, self.deck.row(rows.index(title), left), button)

    def _click_header(self, left, button=1):
        self.screen.click(self.deck.window, self.deck.row(0, left), button)

    def _check_by_mouse(self, *titles):
        """Checks these tracks and no others."""
        self.press("ctrl+d")
        for title in titles:
            self._click(title, CHECK_BOX)
        wait_until(lambda: set(self._checked()), set(titles))

    def _wait_for_saved(self, *titles):
        """Waits for a playlist of these tracks that was written whole."""
        lines = "".join(f"#EXTINF:0, \r\n{self._path(title)}\r\n" for title in titles)
        wait_for(self.playlist.exists, "the playlist")
        wait_until(self.playlist.read_bytes, f"#EXTM3U\r\n{lines}".encode())

    def _header(self):
        return self.deck.cells(HEADER, 0, 0)

    def _header_after(self, last):
        wait_for(lambda: self._header() != last, "another header")
        self.screen.settle()
        return self._header()

    def program_starts_and_lists_the_tracks(self):
        self.deck.start()
        last = FIRST_TRACK + len(TITLES) - 1
        wait_for(lambda: self.deck.has_text(self.deck.TITLES, last), "the tracks")
        self.screen.settle()

    def customize_view_and_the_menu_of_the_header_choose_columns_that_stay(self):
        before = self._header()
        self.deck.open("IDS_DLGTITLE_COLUMN", "ctrl+l")
        self.deck.close("IDS_DLGTITLE_COLUMN", "alt+h", "alt+p", "Return")
        chosen = self._header_after(before)
        self._click_header(TITLE, button=3)
        self.deck.wait_for_popup()
        self.press("b")
        chosen = self._header_after(chosen)
        self.program_ends()
        # As at first, without BPM and Album, with Path.
        self.deck.check_setting(f"ColumnDef={0xFF & ~0x40 & ~0x4 | 0x1000}")
        self.program_starts_and_lists_the_tracks()
        wait_for(lambda: self._header() == chosen, "the same columns")

    def header_sorts_by_one_column_and_keeps_that_order_by_the_next(self):
        self._click_header(TITLE)
        self._learn(TITLES, FIRST_TRACK)
        self._click_header(ARTIST)
        wait_until(self._shown, [ATTIC, CLIFF, EMBER, BROOK, DUNES, FJORD])
        self._click_header(TITLE)
        wait_until(self._shown, TITLES)

    def playlist_is_made_of_tracks_checked_by_mouse_and_by_space(self):
        self._check_by_mouse(BROOK, DUNES)
        self._click(EMBER, TITLE)
        self.press("space", "ctrl+n")
        self._wait_for_saved(BROOK, DUNES, EMBER)
        self._learn([PLAYLIST], FIRST_TRACK + len(TITLES))
        wait_until(self._shown, [*TITLES, PLAYLIST])

    def its_menu_opens_it_by_mouse(self):
        self._click(PLAYLIST, TITLE, button=3)
        self.screen.click(self.deck.wait_for_popup(), OPEN_ITEM)
        wait_until(self._shown, [BROOK, DUNES, EMBER])

    def checked_track_is_moved_up_by_key_and_by_button(self):
        self._check_by_mouse(EMBER)
        self.press("alt+Up")
        wait_until(self._shown, [BROOK, EMBER, DUNES])
        self.screen.click(self.deck.window, self.deck.MOVE_UP_BUTTON)
        wait_until(self._shown, [EMBER, BROOK, DUNES])

    def playlist_is_saved_in_its_new_order(self):
        self.press("ctrl+s")
        self._wait_for_saved(EMBER, BROOK, DUNES)
        wait_until(self._shown, [*TITLES, PLAYLIST])

    def _tag(self, title, name):
        """A tag of a track's file."""
        entry = f"format_tags={name}"
        command = ["ffprobe", "-loglevel", "error", "-show_entries", entry, "-of", "csv=p=0"]
        return output(*command, str(self._path(title))).decode().strip()

    def genre_is_chosen_from_menus_and_written_to_the_file(self):
        self._click(BROOK, TITLE)
        self.press("Menu")
        self.deck.wait_for_popup()
        self.press("g", "f", "t")
        wait_until(lambda: self._tag(BROOK, "genre"), "Traditional Folk")
        check(self._tag(DUNES, "genre") == "Blues", "another track has it, too")

    def in_an_edit_ctrl_a_checks_all_and_delete_deletes_text_alone(self):
        self.press("ctrl+d")
        self._click(ATTIC, ARTIST)
        self.press("F2", "ctrl+a")
        wait_until(self._checked, [*TITLES, PLAYLIST])
        self.press("Home", "Delete", "Return")
        wait_until(lambda: self._tag(ATTIC, "artist"), ARTISTS[0][1:])
        check(not self.deck.find_prompt(), "a question came up")
        check(all(self._path(title).exists() for title in TITLES), "a file is gone")

    def no_keeps_a_file_and_yes_deletes_it_with_its_row(self):
        self._check_by_mouse(FJORD)
        for key, stays in (("n", True), ("y", False)):
            self.press("Delete")
            self.deck.answer(key)
            wait_until(self._path(FJORD).exists, stays)
        wait_until(self._shown, [*TITLES[:-1], PLAYLIST])

    def f1_opens_the_help(self):
        self.press("F1")
        wait_for(self.opened.exists, "the help")
        wait_until(self.opened.read_text, (self.deck.program.parent / "help" / "index.html").as_uri())

    def program_ends(self):
        self.press("ctrl+q")
        self.deck.wait_until_ended()


if __name__ == "__main__":
    sys.exit(CommandsWalk.take())
