#!/usr/bin/env python3
"""Uses the whole program by keyboard alone, with a real window manager: its menus, the controls that
Tab reaches, its dialogs, the forms of its window. Then by the media controls of a desktop.

Usage: keyboard_walk.py PROGRAM
"""

import os
import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from screen import Screen, output, start, take_walk, wait_for, wait_until
from trackdeck import TrackDeck

PROGRAM = pathlib.Path(sys.argv[1]).resolve()

# Half a minute of silence.
TRACK = 30 * 38 * (b"\xff\xfb\x90\x00" + bytes(413))

FIRST_TRACK = 2  # its row in the grid
NEW_TITLE = "Typed without a mouse"
NEW_FOLDER = "Made without a mouse"
VOLUME = 7

# A bus that starts no services.
ALLOWED = '<allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>'
POLICY = f'<policy context="default">{ALLOWED}</policy>'
BUS = f"<busconfig><listen>unix:dir=%s</listen>{POLICY}</busconfig>"
QUIT = "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Quit"


class Walk:
    def __init__(self, cleanup, scratch, home):
        self.home = home
        self.track = home / "Music" / "Veltria Track Deck" / "One.mp3"
        self.folder = home / "Beside" / NEW_FOLDER
        self.track.parent.mkdir(parents=True)
        self.track.write_bytes(TRACK)
        self.folder.parent.mkdir()
        self.start_bus(cleanup, scratch)
        self.screen = Screen(cleanup, scratch, TrackDeck.SCREEN)
        self.deck = TrackDeck(PROGRAM, self.screen, cleanup, scale=1)

    @staticmethod
    def start_bus(cleanup, scratch):
        config = scratch / "bus.xml"
        config.write_text(BUS % scratch)
        command = ["dbus-daemon", "--nofork", "--print-address", f"--config-file={config}"]
        bus = start(cleanup, command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        with bus.stdout as told:
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = told.readline().decode().strip()

    def press(self, *keys):
        self.screen.press(keys)

    def program_starts(self):
        self.deck.start()
        wait_for(lambda: self.deck.has_text(self.deck.TITLES, FIRST_TRACK), "a track")

    def title_is_edited(self):
        self.press("ctrl+Home", "Down", "Right", "F2")
        self.screen.type(NEW_TITLE)
        self.press("Return")
        wait_for(lambda: NEW_TITLE.encode() in self.track.read_bytes(), "the title in the file")

    def plays_and_pauses(self, play, pause):
        glyph = self.deck.play_glyph()
        self.press(play)
        wait_for(lambda: self.deck.play_glyph() != glyph, "the button for a pause")
        self.press(pause)
        wait_for(lambda: self.deck.play_glyph() == glyph, "the button for playing")

    def track_is_played(self):
        self.plays_and_pauses("Return", "ctrl+p")

    def tab_reaches_the_scan_button(self):
        self.deck.open("IDS_SCAN_TITLE", "Tab", "space")
        self.deck.close("IDS_SCAN_TITLE", "Escape")

    def tab_reaches_the_play_button(self):
        self.press("Tab")
        self.plays_and_pauses("space", "space")

    def tab_reaches_the_seek_bar(self):
        before = self.deck.seek_bar()
        self.press("Tab", "Page_Down", "Page_Down")
        wait_for(lambda: self.deck.seek_bar() != before, "another position")

    def play_modes(self):
        self.press("alt+o", "r")  # told by the settings in the end

    def tab_reaches_the_volume(self):
        self.press("Tab", "Home", *["Right"] * VOLUME)  # told by the settings in the end

    def tab_comes_back_to_the_grid(self):
        self.press("Tab", "space")
        wait_for(lambda: self.deck.has_text(TrackDeck.CHECK_BOXES, FIRST_TRACK), "a check")

    def view_menu(self):
        before = self.screen.geometry(self.deck.window)
        self.press("alt+v", "i")
        self.deck.wait_for_geometry(self.deck.MINI_SIZE)
        self.press("ctrl+m")
        self.deck.wait_for_geometry(*before)

    def menu_bar(self):
        self.press("F10", "Down")
        self.deck.wait_for_popup()
        self.deck.open("IDS_MAIN_ABOUT", "Left", "Up", "Return")
        self.deck.close("IDS_MAIN_ABOUT", "Escape")

    def system_menu(self):
        before = self.screen.geometry(self.deck.window)
        for key, wanted in (("x", (TrackDeck.SCREEN, (0, 0))), ("r", before)):
            self.press("alt+space")
            self.deck.wait_for_popup()
            self.press(key)
            self.deck.wait_for_geometry(*wanted)

    def folder_is_made(self):
        self.deck.open("IDS_SCAN_TITLE", "ctrl+f")
        self.press("ctrl+a")
        self.screen.type(str(self.home))
        self.deck.open("IDS_DLGTITLE_FOLDER", "Tab", "space")
        self.press("Right", "Down", "Tab", "space")  # its first folder, and the button
        self.screen.type(NEW_FOLDER)
        self.press("Return")
        wait_for(self.folder.is_dir, f"the folder {self.folder}")

    def folder_is_chosen(self):
        self.deck.close("IDS_DLGTITLE_FOLDER", "Return", under="IDS_SCAN_TITLE")
        self.press("alt+s", "alt+f", "Return")
        self.screen.activate(self.deck.wait_for_window("IDS_SCAN_COMPLET"))
        self.deck.close("IDS_SCAN_COMPLET", "space")
        self.deck.check_setting(f"SearchDir={self.folder}")
        self.deck.check_setting("ScanSubfolders=1")

    def desktop_plays(self):
        output("playerctl", "--player=trackdeck", "play")
        status = ["playerctl", "--player=trackdeck", "status"]
        wait_until(lambda: output(*status).strip(), b"Playing")

    def desktop_ends_it(self):
        output("dbus-send", "--print-reply", "--dest=org.mpris.MediaPlayer2.trackdeck", *QUIT)
        self.deck.wait_until_ended()
        self.deck.check_setting(f"Volume={VOLUME}")
        self.deck.check_setting("Playmode=2")

    STEPS = [
        (program_starts, "the program starts and lists a track"),
        (title_is_edited, "the keys of the grid edit a title"),
        (track_is_played, "Enter plays a track, and another key makes a pause"),
        (tab_reaches_the_scan_button, "Tab reaches the button for scans"),
        (tab_reaches_the_play_button, "Tab reaches the button that plays and makes a pause"),
        (tab_reaches_the_seek_bar, "Tab reaches the seek bar"),
        (tab_reaches_the_volume, "Tab reaches the volume"),
        (tab_comes_back_to_the_grid, "Tab comes back to the grid, and Space checks the track"),
        (view_menu, "the View menu makes a mini player, and a key the window again"),
        (play_modes, "the Options menu has the play modes"),
        (menu_bar, "F10 and arrows go through the menus to a dialog"),
        (system_menu, "the system menu maximizes and restores the window"),
        (folder_is_made, "a folder is found by arrows, and one is made in it and named"),
        (folder_is_chosen, "it is chosen and scanned"),
        (desktop_plays, "the desktop's media controls play"),
        (desktop_ends_it, "they end the program, and it keeps what was set"),
    ]


if __name__ == "__main__":
    sys.exit(take_walk(Walk, PROGRAM))
