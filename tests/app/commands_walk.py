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
from screen import Screen, check, output, take_walk, wait_for, wait_until
from trackdeck import TrackDeck

PROGRAM = pathlib.Path(sys.argv[1]).resolve()

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

COLUMNS = 0xFF & ~0x40 & ~0x4 | 0x1000  # as at first, without BPM and Album, with Path


class Walk:
    def __init__(self, cleanup, scratch, home):
        self.music = home / "Music" / "Veltria Track Deck"
        self.music.mkdir(parents=True)
        for number, title in enumerate(TITLES):
            tags = ["-metadata", f"title={title}", "-metadata", f"artist={ARTISTS[number % 2]}"]
            subprocess.run([*ENCODER, *tags, self.path(title)], check=True)
        self.playlist = self.music / f"{PLAYLIST}.m3u"
        self.opened = scratch / "opened"
        browser = scratch / "bin" / "xdg-open"  # leaves what it is to open
        browser.parent.mkdir()
        browser.write_text(f"#!/bin/sh\nprintf %s \"$1\" >'{self.opened}'\n")
        browser.chmod(0o755)
        os.environ["PATH"] = f"{browser.parent}:{os.environ['PATH']}"
        self.looks = {}  # of titles: where they have ink
        self.header = b""
        self.screen = Screen(cleanup, scratch, TrackDeck.SCREEN)
        self.deck = TrackDeck(PROGRAM, self.screen, cleanup, scale=1)

    def path(self, title):
        return self.music / f"{title}.mp3"

    def press(self, *keys):
        self.screen.press(keys)

    def learn(self, titles, row):
        """Learns what titles look like, which stand in the rows from `row` on."""
        self.screen.settle()
        looks = self.deck.ink(self.deck.TITLES, row, row + len(titles) - 1)
        self.looks.update(zip(titles, looks))

    def title_of(self, ink):
        """The title that looks like this, or None. The ground of a row changes the look a little."""
        for title, look in self.looks.items():
            if len(ink ^ look) * 4 < len(look):
                return title
        return None

    def rows(self):
        """The titles in the rows of the grid, None for others."""
        inks = self.deck.ink(self.deck.TITLES, 0, self.deck.LAST_ROW)
        return [self.title_of(ink) for ink in inks]

    def shown(self):
        return [title for title in self.rows() if title]

    def checked(self):
        ticks = self.deck.ink(self.deck.CHECK_BOXES, 0, self.deck.LAST_ROW)
        return [title for title, tick in zip(self.rows(), ticks) if title and tick]

    def click(self, title, left, button=1):
        rows = self.rows()
        check(title in rows, f"no {title} in {rows}")
        self.screen.click(self.deck.window, self.deck.row(rows.index(title), left), button)

    def click_header(self, left, button=1):
        self.screen.click(self.deck.window, self.deck.row(0, left), button)

    def check_by_mouse(self, *titles):
        """Checks these tracks and no others."""
        self.press("ctrl+d")
        for title in titles:
            self.click(title, CHECK_BOX)
        wait_until(lambda: set(self.checked()), set(titles))

    def wait_for_saved(self, *titles):
        """Waits for a playlist of these tracks that was written whole."""
        lines = ["#EXTM3U"]
        for title in titles:
            lines += ["#EXTINF:0, ", str(self.path(title))]
        wait_for(self.playlist.exists, "the playlist")
        wait_until(self.playlist.read_bytes, "".join(f"{line}\r\n" for line in lines).encode())

    def header_now(self):
        return self.deck.cells(HEADER, 0, 0)

    def wait_for_another_header(self):
        wait_for(lambda: self.header_now() != self.header, "another header")
        self.screen.settle()
        self.header = self.header_now()

    def program_starts(self):
        self.deck.start()
        last = FIRST_TRACK + len(TITLES) - 1
        wait_for(lambda: self.deck.has_text(self.deck.TITLES, last), "the tracks")
        self.screen.settle()

    def columns_are_chosen(self):
        self.header = self.header_now()
        self.deck.open("IDS_DLGTITLE_COLUMN", "ctrl+l")
        self.deck.close("IDS_DLGTITLE_COLUMN", "alt+h", "alt+p", "Return")
        self.wait_for_another_header()
        self.click_header(TITLE, button=3)
        self.deck.wait_for_popup()
        self.press("b")
        self.wait_for_another_header()

    def columns_are_kept(self):
        self.program_ends()
        self.deck.check_setting(f"ColumnDef={COLUMNS}")
        self.program_starts()
        wait_until(lambda: self.header_now() == self.header, True)

    def list_is_sorted_twice(self):
        self.click_header(TITLE)
        self.learn(TITLES, FIRST_TRACK)
        self.click_header(ARTIST)
        wait_until(self.shown, [ATTIC, CLIFF, EMBER, BROOK, DUNES, FJORD])
        self.click_header(TITLE)
        wait_until(self.shown, TITLES)

    def playlist_is_made(self):
        self.check_by_mouse(BROOK, DUNES)
        self.click(EMBER, TITLE)
        self.press("space", "ctrl+n")
        self.wait_for_saved(BROOK, DUNES, EMBER)
        self.learn([PLAYLIST], FIRST_TRACK + len(TITLES))
        wait_until(self.shown, [*TITLES, PLAYLIST])

    def playlist_is_opened_by_mouse(self):
        self.click(PLAYLIST, TITLE, button=3)
        self.screen.click(self.deck.wait_for_popup(), OPEN_ITEM)
        wait_until(self.shown, [BROOK, DUNES, EMBER])

    def tracks_are_moved(self):
        self.check_by_mouse(EMBER)
        self.press("alt+Up")
        wait_until(self.shown, [BROOK, EMBER, DUNES])
        self.screen.click(self.deck.window, self.deck.MOVE_UP_BUTTON)
        wait_until(self.shown, [EMBER, BROOK, DUNES])

    def playlist_is_saved(self):
        self.press("ctrl+s")
        self.wait_for_saved(EMBER, BROOK, DUNES)
        wait_until(self.shown, [*TITLES, PLAYLIST])

    def tag(self, title, name):
        """A tag of a track's file."""
        entry = f"format_tags={name}"
        command = ["ffprobe", "-loglevel", "error", "-show_entries", entry, "-of", "csv=p=0"]
        return output(*command, str(self.path(title))).decode().strip()

    def genre_is_chosen(self):
        self.click(BROOK, TITLE)
        self.press("Menu")
        self.deck.wait_for_popup()
        self.press("g", "f", "t")
        wait_until(lambda: self.tag(BROOK, "genre"), "Traditional Folk")
        check(self.tag(DUNES, "genre") == "Blues", "another track has it, too")

    def edit_has_its_own_delete(self):
        self.press("ctrl+d")
        self.click(ATTIC, ARTIST)
        self.press("F2", "ctrl+a")
        wait_until(self.checked, [*TITLES, PLAYLIST])
        self.press("Home", "Delete", "Return")
        wait_until(lambda: self.tag(ATTIC, "artist"), ARTISTS[0][1:])
        check(not self.deck.find_prompt(), "a question came up")
        check(all(self.path(title).exists() for title in TITLES), "a file is gone")

    def file_is_deleted(self):
        self.check_by_mouse(FJORD)
        for key, stays in (("n", True), ("y", False)):
            self.press("Delete")
            self.deck.answer(key)
            wait_until(self.path(FJORD).exists, stays)
        wait_until(self.shown, [*TITLES[:-1], PLAYLIST])

    def help_is_opened(self):
        self.press("F1")
        wait_for(self.opened.exists, "the help")
        wait_until(self.opened.read_text, (PROGRAM.parent / "help" / "index.html").as_uri())

    def program_ends(self):
        self.press("ctrl+q")
        self.deck.wait_until_ended()

    STEPS = [
        (program_starts, "the program starts and lists the tracks"),
        (columns_are_chosen, "Customize View and the header's menu choose columns"),
        (columns_are_kept, "the next start shows the same columns"),
        (list_is_sorted_twice, "the header sorts by one column, and keeps that order by the next"),
        (playlist_is_made, "a playlist is made of tracks checked by mouse and by Space"),
        (playlist_is_opened_by_mouse, "its menu opens it by mouse"),
        (tracks_are_moved, "a checked track is moved up by key and by button"),
        (playlist_is_saved, "the playlist is saved in its new order"),
        (genre_is_chosen, "a genre is chosen from menus, and written to the file"),
        (edit_has_its_own_delete, "in an edit Ctrl+A checks all, and Delete deletes text alone"),
        (file_is_deleted, "No keeps a file, Yes deletes it with its row"),
        (help_is_opened, "F1 opens the help"),
        (program_ends, "the program ends"),
    ]


if __name__ == "__main__":
    sys.exit(take_walk(Walk, PROGRAM))
