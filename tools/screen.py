"""A screen with a window manager, and the hands of a user on it: what the walks are made of."""

import contextlib
import os
import pathlib
import re
import subprocess
import tempfile
import time

PATIENCE = 30  # seconds that anything may take

# The window manager takes no key but this one, so that all others reach the program.
WINDOW_MANAGER = """<openbox_config xmlns="http://openbox.org/3.4/rc">
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
</openbox_config>
"""


class StepFailed(Exception):
    pass


def check(condition, what):
    if not condition:
        raise StepFailed(what)


def wait_for(probe, what):
    """The first answer of `probe` that is true; polled, for what happens on a screen tells nobody."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        answer = probe()
        if answer:
            return answer
        time.sleep(0.1)
    raise StepFailed(f"waited {PATIENCE} s for {what}")


def wait_until(look, wanted):
    """Waits until `look` answers what is wanted."""
    try:
        wait_for(lambda: look() == wanted, "it")
    except StepFailed:
        raise StepFailed(f"{look()} instead of {wanted}") from None


def output(*command):
    result = subprocess.run(command, capture_output=True, timeout=PATIENCE, check=False)
    return result.stdout


class Screen:
    """An X server with a window manager. What it shows, and the hands that work on it."""

    def __init__(self, cleanup, scratch, size, pictures=None):
        self.pictures = pictures
        reading, writing = os.pipe()
        server = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "%dx%dx24" % size]
        server += ["-nolisten", "tcp", "-noreset"]
        start(cleanup, server, pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()

        # Its startup command runs once it manages windows.
        up = scratch / "openbox.up"
        rules = scratch / "openbox.xml"
        rules.write_text(WINDOW_MANAGER)
        manager = ["openbox", "--sm-disable", "--config-file", rules, "--startup", f"touch {up}"]
        start(cleanup, manager, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(up.exists, "the window manager")

    @staticmethod
    def find(title, beside=None):
        """The window of that title that is on the screen, or None; another one than `beside`."""
        found = output("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$")
        return next((window for window in map(int, found.split()) if window != beside), None)

    @staticmethod
    def find_untitled(program):
        """A window on the screen that has the program's name for want of a title, or None."""
        for found in output("xdotool", "search", "--onlyvisible", "--class", f"^{program}$").split():
            if output("xdotool", "getwindowname", found).decode().strip() == program:
                return int(found)
        return None

    @staticmethod
    def activate(window):
        output("xdotool", "windowactivate", "--sync", str(window))

    @staticmethod
    def press(keys):
        output("xdotool", "key", "--delay", "80", *keys)

    @staticmethod
    def type(text):
        output("xdotool", "type", "--delay", "10", text)

    @staticmethod
    def point(window, point):
        output("xdotool", "mousemove", "--window", str(window), *map(str, point))

    @classmethod
    def click(cls, window, point, button=1, times=1):
        cls.point(window, point)
        output("xdotool", "click", "--repeat", str(times), "--delay", "60", str(button))

    @staticmethod
    def hold():
        output("xdotool", "mousedown", "1")

    @staticmethod
    def pull(way):
        """Moves the mouse by `way`, in steps that a window manager follows."""
        for _ in range(4):
            step = [str(length // 4) for length in way]
            output("xdotool", "mousemove_relative", "--sync", "--", *step)

    @classmethod
    def let_go(cls, window):
        """Ends a drag. A window that is sized by it follows a little later than the mouse; let go
        before, it would stay behind."""
        last = None
        while (now := cls.geometry(window)) != last:
            last = now
            time.sleep(0.2)
        output("xdotool", "mouseup", "1")

    @staticmethod
    def place(window, size, point):
        output("xdotool", "windowsize", str(window), *map(str, size))
        output("xdotool", "windowmove", str(window), *map(str, point))

    @staticmethod
    def geometry(window):
        """(width, height), (left, top)"""
        told = output("xwininfo", "-id", str(window)).decode()
        names = ["Width", "Height", "Absolute upper-left X", "Absolute upper-left Y"]
        numbers = [int(re.search(rf"{name}: *(-?\d+)", told)[1]) for name in names]
        return tuple(numbers[:2]), tuple(numbers[2:])

    @staticmethod
    def area(window, area):
        """The pixels of an area: width, height, left and top."""
        crop = "%dx%d+%d+%d" % area
        return output("import", "-window", str(window), "-crop", crop, "-depth", "8", "rgb:-")

    @classmethod
    def colour(cls, window, point):
        return cls.area(window, (1, 1, *point))

    @staticmethod
    def settle():
        """Waits until nothing moves on the screen any more; returns its pixels."""
        last = b""
        deadline = time.monotonic() + 5
        while time.monotonic() < deadline:
            pixels = output("import", "-window", "root", "-depth", "8", "gray:-")
            if pixels == last:
                break
            last = pixels
            time.sleep(0.3)
        return pixels

    def picture(self, name):
        """Leaves a picture of the screen once nothing moves on it; returns its pixels."""
        pixels = self.settle()
        output("import", "-window", "root", str(self.pictures / f"{name}.png"))
        return pixels


def start(cleanup, command, **options):
    """Starts a process that `cleanup` ends, if it has not ended by itself."""
    process = subprocess.Popen(command, stdin=subprocess.DEVNULL, **options)

    def stop():
        process.terminate()
        process.wait()

    cleanup.callback(stop)
    return process


@contextlib.contextmanager
def new_user(home, scale=1):
    """Every process started from here on sees a new user with this home, and a desktop of this
    scale. Gives a scratch folder and what ends processes at the end."""
    with contextlib.ExitStack() as cleanup:
        scratch = pathlib.Path(cleanup.enter_context(tempfile.TemporaryDirectory()))
        config, runtime, temporary = home / ".config", scratch / "runtime", scratch / "tmp"
        config.mkdir(parents=True)
        runtime.mkdir(mode=0o700)
        temporary.mkdir()
        (config / "user-dirs.dirs").write_text(f'XDG_MUSIC_DIR="{home / "Music"}"\n')
        for name in list(os.environ):
            if name.startswith(("XDG_", "QT_", "WAYLAND_", "DBUS_", "LC_")):
                del os.environ[name]
        os.environ.update(
            HOME=str(home),
            XDG_RUNTIME_DIR=str(runtime),
            TMPDIR=str(temporary),
            QT_QPA_PLATFORM="xcb",
            QT_SCALE_FACTOR=str(scale),
            LC_ALL="C.UTF-8",
        )
        yield cleanup, scratch


def take(steps, picture):
    """Takes the steps, pairs of a function and its text, up to the first that fails; returns whether
    none did. The screen at a failure becomes a picture of that name."""
    for step, text in steps:
        try:
            step()
        except (StepFailed, subprocess.SubprocessError) as failure:
            output("import", "-window", "root", str(picture))
            print(f"FAILED: {text}: {failure}\nThe screen then: {picture}", flush=True)
            return False
        print(f"ok: {text}", flush=True)
    return True
