#!/usr/bin/env python3
"""Drives the program by the desktop's media controls, on a bus of the walk's own, with real music.

Usage: mpris_walk.py PROGRAM
"""

import os
import pathlib
import re
import subprocess
import sys
import urllib.parse
import xml.etree.ElementTree as ElementTree

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from music import make_track
from screen import Screen, check, output, start, take_walk, wait_for
from trackdeck import TrackDeck

PROGRAM = pathlib.Path(sys.argv[1]).resolve()

SERVICE = "org.mpris.MediaPlayer2.trackdeck"
OBJECT = "/org/mpris/MediaPlayer2"

# A bus that starts no services.
BUS = """<busconfig>
  <type>session</type>
  <listen>unix:dir={folder}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/>
  </policy>
</busconfig>
"""

TITLES = ["First", "Zweites Stück", "Третья"]
SECONDS = 120
FIRST_TRACK = 2  # its row in the grid


def playerctl(*arguments):
    return output("playerctl", "--player=trackdeck", *arguments).decode().strip()


def dbus_send(method):
    return output("dbus-send", "--print-reply=literal", f"--dest={SERVICE}", OBJECT, method).decode()


class Walk:
    def __init__(self, cleanup, scratch, home):
        self.home = home
        self.scratch = scratch
        self.music = home / "Music" / "Veltria Track Deck"
        self.music.mkdir(parents=True)
        for title in TITLES:
            tags = {"title": title, "artist": "Hollin Brae", "album": "Salt Road"}
            make_track(self.music / f"{title}.mp3", SECONDS, tags)
        self.order = []  # of the titles, as the list has them
        self.bus = self.start_bus(cleanup)
        self.screen = Screen(cleanup, scratch, TrackDeck.SCREEN)
        self.deck = TrackDeck(PROGRAM, self.screen, cleanup, scale=1)

    def start_bus(self, cleanup):
        config = self.scratch / "bus.xml"
        config.write_text(BUS.format(folder=self.scratch))
        command = ["dbus-daemon", "--nofork", "--print-address", f"--config-file={config}"]
        bus = start(cleanup, command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        with bus.stdout as told:
            os.environ["DBUS_SESSION_BUS_ADDRESS"] = told.readline().decode().strip()
        return bus

    @staticmethod
    def wait_for_answer(wanted, *question):
        wait_for(lambda: playerctl(*question) == wanted, f"{question} to be {wanted}")

    @staticmethod
    def title():
        return playerctl("metadata", "xesam:title")

    def wait_for_next(self):
        """Waits for a track that was not played yet."""
        wait_for(lambda: self.title() not in self.order, "another track")
        self.order.append(self.title())
        check(self.order[-1] in TITLES, f"{self.order[-1]} is no title")

    @staticmethod
    def position():
        return float(playerctl("position"))

    @staticmethod
    def art():
        url = playerctl("metadata", "mpris:artUrl")
        return pathlib.Path(urllib.parse.unquote(url.removeprefix("file://"))) if url else None

    def program_starts(self):
        self.deck.start()
        wait_for(lambda: "trackdeck" in output("playerctl", "--list-all").decode(), "the player")
        last = FIRST_TRACK + len(TITLES) - 1
        wait_for(lambda: self.deck.has_text(self.deck.TITLES, last), "the tracks")

    def interfaces_are_described(self):
        told = dbus_send("org.freedesktop.DBus.Introspectable.Introspect")
        described = ElementTree.fromstring(told[told.index("<node") :])
        names = {element.get("name") for element in described.iter()}
        for name in ("org.mpris.MediaPlayer2", "Raise", "org.mpris.MediaPlayer2.Player", "Seeked"):
            check(name in names, f"no {name} in {told}")

    def play(self):
        playerctl("play")
        self.wait_for_answer("Playing", "status")
        wait_for(lambda: self.position() > 1, "a second of music")

    def metadata_is_told(self):
        self.wait_for_next()
        told = {key: playerctl("metadata", key) for key in ("xesam:artist", "xesam:album")}
        check(told == {"xesam:artist": "Hollin Brae", "xesam:album": "Salt Road"}, told)
        url = urllib.parse.unquote(playerctl("metadata", "xesam:url"))
        check(url == f"file://{self.music / self.order[0]}.mp3", url)
        wait_for(lambda: playerctl("metadata", "mpris:length"), "the length")
        length = int(playerctl("metadata", "mpris:length")) / 1_000_000
        check(abs(length - SECONDS) < 1, f"{length} seconds")

    def cover_is_a_file(self):
        wait_for(self.art, "the cover")
        check(self.art().read_bytes().startswith(b"\x89PNG"), f"{self.art()} is no picture")
        check(self.art().parent.stat().st_mode & 0o777 == 0o700, "others can read the cover")

    def pause(self):
        playerctl("pause")
        self.wait_for_answer("Paused", "status")
        playerctl("play-pause")
        self.wait_for_answer("Playing", "status")
        playerctl("play-pause")
        self.wait_for_answer("Paused", "status")

    def seek(self):
        playerctl("position", "60")
        wait_for(lambda: abs(self.position() - 60) < 0.5, "the middle")
        playerctl("position", "20-")
        wait_for(lambda: abs(self.position() - 40) < 0.5, "20 seconds less")
        playerctl("play")
        wait_for(lambda: self.position() > 41, "the music to go on from there")

    def go_to_next(self):
        cover = self.art()
        playerctl("next")
        self.wait_for_next()
        wait_for(lambda: self.art() not in (None, cover), "its cover")
        check(not cover.exists(), "the cover before is still there")
        self.wait_for_answer("Playing", "status")
        playerctl("previous")
        self.wait_for_answer(self.order[0], "metadata", "xesam:title")

    def seek_past_the_end(self):
        wait_for(lambda: self.position() > 0.1, "the music")
        playerctl("position", f"{SECONDS + 1}+")
        self.wait_for_answer(self.order[1], "metadata", "xesam:title")

    def end_of_track_leads_on(self):
        wait_for(lambda: self.position() > 0.1, "the music")
        playerctl("position", str(SECONDS - 2))
        self.wait_for_next()

    def set_volume(self):
        self.wait_for_answer("0.700000", "volume")
        playerctl("volume", "0.25")
        self.wait_for_answer("0.250000", "volume")

    def set_play_mode(self):
        playerctl("shuffle", "On")
        self.wait_for_answer("On", "shuffle")
        playerctl("loop", "Playlist")
        self.wait_for_answer("Playlist", "loop")
        playerctl("loop", "Track")
        self.wait_for_answer("Playlist", "loop")

    def stop(self):
        playerctl("stop")
        self.wait_for_answer("Stopped", "status")

    def quit(self):
        dbus_send("org.mpris.MediaPlayer2.Quit")
        self.deck.wait_until_ended()
        settings = (self.home / ".config" / "Veltria" / "Track Deck.ini").read_text()
        kept = dict(re.findall(r"^(Volume|Playmode)=(\d+)$", settings, re.MULTILINE))
        check(kept == {"Volume": "25", "Playmode": "3"}, kept)

    def goes_on_without_the_bus(self):
        self.program_starts()
        self.bus.terminate()
        self.bus.wait()
        self.screen.settle()
        self.screen.press(["ctrl+q"])
        self.deck.wait_until_ended()

    STEPS = [
        (program_starts, "the desktop finds the player"),
        (interfaces_are_described, "it describes itself"),
        (play, "play"),
        (metadata_is_told, "the track is told"),
        (cover_is_a_file, "its cover is a file of the user's own"),
        (pause, "pause and play-pause"),
        (seek, "positions are chosen"),
        (go_to_next, "next and previous, with their covers"),
        (seek_past_the_end, "beyond the end lies the next track"),
        (end_of_track_leads_on, "the end of a track leads to the next"),
        (set_volume, "the volume is set"),
        (set_play_mode, "shuffle and loop are set"),
        (stop, "stop"),
        (quit, "the program ends, and keeps what was set"),
        (goes_on_without_the_bus, "it goes on when the bus is gone"),
    ]


if __name__ == "__main__":
    sys.exit(1 if take_walk(Walk) else 0)
