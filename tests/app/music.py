"""Real music for the walks."""

import subprocess


def make_track(path, seconds, tags):
    """An MP3 file with an ID3v2.3 tag and a picture."""
    command = ["ffmpeg", "-nostdin", "-loglevel", "error"]
    command += ["-f", "lavfi", "-i", f"sine=duration={seconds}"]
    command += ["-f", "lavfi", "-i", "color=orange:size=64x48:duration=1:rate=1"]
    command += ["-map", "0", "-map", "1", "-c:a", "libmp3lame", "-b:a", "32k", "-id3v2_version", "3"]
    for name, text in tags.items():
        command += ["-metadata", f"{name}={text}"]
    subprocess.run([*command, path], check=True)
