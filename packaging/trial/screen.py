"""A display that nobody sees, whose pixels can be asked for."""
import os
import pathlib
import struct
import subprocess
import tempfile
import time
import zlib

PAINTED = 200  # colours; letters alone have more, an empty window has a handful


class Screen:
    def __init__(self):
        self.memory = tempfile.TemporaryDirectory(prefix="pendra-screen-")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1000x24", "-fbdir", self.memory.name, "-br",
             "-nolisten", "tcp", "-noreset", "-ac"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as told:  # to its end: the server would not outlive a pipe that is cut
            self.display = ":" + told.readline().strip()

    def close(self):
        self.server.terminate()
        self.server.wait()
        self.memory.cleanup()

    def rows(self):
        """The pixels, a row of 32-bit values each."""
        data = (pathlib.Path(self.memory.name) / "Xvfb_screen0").read_bytes()
        header = struct.unpack(">25I", data[:100])
        width, height, line, colours = header[4], header[5], header[12], header[19]
        start = header[0] + colours * 12
        return [data[start + row * line:start + row * line + width * 4] for row in range(height)]

    def titles(self):
        """Of the windows on it."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", ".", "getwindowname", "%@"],
                               env={**os.environ, "DISPLAY": self.display}, capture_output=True, text=True, check=False)
        return [title for title in found.stdout.splitlines() if title]

    def is_painted(self):
        return len({pixel for row in self.rows()[::4] for pixel in struct.unpack(f"<{len(row) // 4}I", row)}) > PAINTED

    def wait_for_window(self, process, seconds=60):
        """The seconds until a window stands there with its text."""
        begin = time.monotonic()
        while not (self.titles() and self.is_painted()):
            if process.poll() is not None:
                raise SystemExit(f"the program ended with {process.returncode} before its window came")
            if time.monotonic() - begin > seconds:
                raise SystemExit(f"no window within {seconds} s; on the screen: {self.titles()}")
            time.sleep(0.02)
        return time.monotonic() - begin

    def picture(self, path):
        """Writes what is on it as a PNG."""
        rows = self.rows()
        lines = b"".join(b"\0" + bytes(byte for at in range(0, len(row), 4) for byte in row[at:at + 3][::-1])
                         for row in rows)

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        head = struct.pack(">IIBBBBB", len(rows[0]) // 4, len(rows), 8, 2, 0, 0, 0)
        pathlib.Path(path).write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) +
                                       chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))
