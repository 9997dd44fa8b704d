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
from screen import output, start, wait_for, wait_until
from trackdeck import TrackDeck, Walk

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


class KeyboardWalk(Walk):
    def __init__(self, program, cleanup, scratch, home):
        super().__init__(program, cleanup, scratch, home)
        self.track = home / "Music" / "Veltria Track Deck" / "One.mp3"
        self.folder = home / "Beside" / NEW_FOLDER
        self.track.parent.mkdir(parents=True)
        self.track.write_bytes(TRACK)
        self.folder.parent.mkdir()
        config = scratch / "bus.xml"
        config.write_text(BUS % scratch)
        command = ["dbus-daemon", "--nofork", "--print-address", f"--config-file={config}"]
        bus = start(cleanup, command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        with bus.stdout as told:
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = told.readline().decode().strip()

    def program_starts_and_lists_a_track(self):
        self.deck.start()
        wait_for(lambda: self.deck.has_text(self.deck.TITLES, FIRST_TRACK), "a track")

    def keys_of_the_grid_edit_a_title(self):
        self.press("ctrl+Home", "Down", "Right", "F2")
        self.screen.type(NEW_TITLE)
        self.press("Return")
        wait_for(lambda: NEW_TITLE.encode() in self.track.read_bytes(), "the title in the file")

    def _plays_and_pauses(self, play, pause):
        glyph = self.deck.play_glyph()
        self.press(play)
        wait_for(lambda: self.deck.play_glyph() != glyph, "the button for a pause")
        self.press(pause)
        wait_for(lambda: self.deck.play_glyph() == glyph, "the button for playing")

    def enter_plays_a_track_and_another_key_makes_a_pause(self):
        self._plays_and_pauses("Return", "ctrl+p")

    def tab_reaches_the_scan_button(self):
        self.deck.open("IDS_SCAN_TITLE", "Tab", "space")
        self.deck.close("IDS_SCAN_TITLE", "Escape")

    def tab_reaches_the_button_that_plays_and_makes_a_pause(self):
        self.press("Tab")
        self._plays_and_pauses("space", "space")

    def tab_reaches_the_seek_bar(self):
        before = self.deck.seek_bar()
        self.press("Tab", "Page_Down", "Page_Down")
        wait_for(lambda: self.deck.seek_bar() != before, "another position")

    def tab_reaches_the_volume(self):
        self.press("Tab", "Home", *["Right"] * VOLUME)  # told by the settings in the end

    def tab_comes_back_to_the_grid_and_space_checks_the_track(self):
        self.press("Tab", "space")
        wait_for(lambda: self.deck.has_text(TrackDeck.CHECK_BOXES, FIRST_TRACK), "a check")

    def view_menu_makes_a_mini_player_and_a_key_the_window_again(self):
        before = self.screen.geometry(self.deck.window)
        self.press("alt+v", "i")
        self.deck.wait_for_geometry(self.deck.MINI_SIZE)
        self.press("ctrl+m")
        self.deck.wait_for_geometry(*before)

    def arrows_go_through_the_menus_to_a_dialog(self):
        self.press("alt+o", "r")  # a play mode; told by the settings in the end
        self.press("F10", "Down")
        self.deck.wait_for_popup()
        self.deck.open("IDS_MAIN_ABOUT", "Left", "Up", "Return")
        self.deck.close("IDS_MAIN_ABOUT", "Escape")

    def folder_is_found_by_arrows_and_one_is_made_in_it_and_named(self):
        self.deck.open("IDS_SCAN_TITLE", "ctrl+f")
        self.press("ctrl+a")
        self.screen.type(str(self.home))
        self.deck.open("IDS_DLGTITLE_FOLDER", "Tab", "space")
        self.press("Right", "Down", "Tab", "space")  # its first folder, and the button
        self.screen.type(NEW_FOLDER)
        self.press("Return")
        wait_for(self.folder.is_dir, f"the folder {self.folder}")

    def it_is_chosen_and_scanned(self):
        self.deck.close("IDS_DLGTITLE_FOLDER", "Return", under="IDS_SCAN_TITLE")
        self.press("alt+s", "alt+f", "Return")
        self.screen.activate(self.deck.wait_for_window("IDS_SCAN_COMPLET"))
        self.deck.close("IDS_SCAN_COMPLET", "space")
        self.deck.check_setting(f"SearchDir={self.folder}")
        self.deck.check_setting("ScanSubfolders=1")

    def media_controls_of_the_desktop_play_and_end_the_program(self):
        player = ["playerctl", "--player=trackdeck"]
        output(*player, "play")
        wait_until(lambda: output(*player, "status").strip(), b"Playing")
        output("dbus-send", "--print-reply", "--dest=org.mpris.MediaPlayer2.trackdeck", *QUIT)
        self.deck.wait_until_ended()
        self.deck.check_setting(f"Volume={VOLUME}")
        self.deck.check_setting("Playmode=2")


if __name__ == "__main__":
    sys.exit(KeyboardWalk.take())
