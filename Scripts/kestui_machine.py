"""One OVMF virtual machine under QEMU for the demo and the end-to-end tests.

The machine boots a firmware (Debian's OVMF, or one built with KestUi in its
flash), optionally with a staged FAT volume and with a configuration file
handed to the firmware through QEMU's fw_cfg device; it keeps everything the firmware writes to
the serial port (read from a socket, which is also how keys are typed on the
serial terminal), presses keys on the PS/2 keyboard through the QEMU monitor,
and takes screenshots (PPM from QEMU, kept as PNG, with pixels for checks).
"""
import os
import re
import shutil
import socket
import struct
import subprocess
import tempfile
import threading
import time
import zlib

OVMF_CODE = os.environ.get("OVMF_CODE", "/usr/share/OVMF/OVMF_CODE_4M.fd")
OVMF_VARS = os.environ.get("OVMF_VARS", "/usr/share/OVMF/OVMF_VARS_4M.fd")
ANSI_ESCAPE = re.compile(r"\x1b(\[[0-9;?]*[A-Za-z]|[()][0-9A-Za-z]|[A-Za-z])")

# The serial terminal's escape sequences for the keys the scenarios type. OVMF's
# terminal is a PC-ANSI one: F1 to F10 are ESC [ M to ESC [ V; it has no F11 or F12.
SERIAL_KEYS = {"f2": b"\x1b[N", "f9": b"\x1b[U", "esc": b"\x1b", "ret": b"\r", "up": b"\x1b[A", "down": b"\x1b[B"}


class MachineError(Exception):
    """The machine did not do what a scenario waited for."""


def monitor_command(path, command, timeout=10.0):
    """Sends one command to the QEMU human monitor at path and returns its answer."""
    with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as connection:
        connection.settimeout(timeout)
        connection.connect(path)
        answer = b""
        while not answer.endswith(b"(qemu) "):
            chunk = connection.recv(4096)
            if not chunk:
                raise MachineError("the QEMU monitor closed")
            answer += chunk
        connection.sendall(command.encode() + b"\n")
        answer = b""
        while not answer.endswith(b"(qemu) "):
            chunk = connection.recv(4096)
            if not chunk:
                break
            answer += chunk
        return ANSI_ESCAPE.sub("", answer.decode(errors="replace"))


class Screenshot:
    """A screendump: its size and pixels (RGB bytes), saved as PNG when asked."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self.pixels = width, height, pixels

    @staticmethod
    def from_ppm(data):
        # P6 header: magic, width, height, maximum, each followed by white space.
        fields = re.match(rb"P6\s+(\d+)\s+(\d+)\s+(\d+)\s", data)
        if not fields or int(fields.group(3)) != 255:
            raise MachineError("QEMU's screendump is not an 8-bit PPM")
        width, height = int(fields.group(1)), int(fields.group(2))
        pixels = data[fields.end():fields.end() + width * height * 3]
        if len(pixels) != width * height * 3:
            raise MachineError("QEMU's screendump is cut short")
        return Screenshot(width, height, pixels)

    def save_png(self, path):
        rows = b"".join(b"\x00" + self.pixels[row * self.width * 3:(row + 1) * self.width * 3]
                        for row in range(self.height))

        def chunk(kind, body):
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0))
                       + chunk(b"IDAT", zlib.compress(rows, 6)) + chunk(b"IEND", b""))

    def count_colour(self, colour, box=None):
        """Pixels of exactly colour (0xRRGGBB), in box (x0, y0, x1, y1) or the whole screen."""
        x0, y0, x1, y1 = box or (0, 0, self.width, self.height)
        wanted = bytes(((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF))
        count = 0
        for row in range(max(0, y0), min(self.height, y1)):
            line = self.pixels[(row * self.width + x0) * 3:(row * self.width + x1) * 3]
            count += sum(1 for index in range(0, len(line), 3) if line[index:index + 3] == wanted)
        return count

    def longest_run(self, colour):
        """The longest horizontal run of colour on any row: a bar shows as a long run."""
        wanted = bytes(((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF))
        best = 0
        pattern = re.compile(b"(?:" + re.escape(wanted) + b")+")
        for row in range(self.height):
            line = self.pixels[row * self.width * 3:(row + 1) * self.width * 3]
            for match in pattern.finditer(line):
                # A run must start on a pixel boundary to be a run of pixels.
                if match.start() % 3 == 0:
                    best = max(best, (match.end() - match.start()) // 3)
        return best


class Machine:
    def __init__(self, volume, out_dir, serial_number, display="none", accelerator="tcg",
                 code=OVMF_CODE, variables=OVMF_VARS, fw_cfg=None):
        """volume: a folder served as a FAT disk, or None; fw_cfg: {name: text} for QEMU's fw_cfg files."""
        self.volume, self.out_dir = volume, out_dir
        self.serial_number, self.display, self.accelerator = serial_number, display, accelerator
        self.code, self.variables, self.fw_cfg = code, variables, fw_cfg or {}
        self.scratch = tempfile.mkdtemp(prefix="kestui-vm-")
        self.monitor_path = os.path.join(self.scratch, "monitor.sock")
        self.serial_path = os.path.join(self.scratch, "serial.sock")
        self.serial_log = os.path.join(out_dir, "serial.log")
        self.text = ""
        self.lock = threading.Lock()
        self.qemu = None
        self.serial = None
        self.reader = None
        self.started = None

    def command(self):
        variables = os.path.join(self.scratch, "OVMF_VARS.fd")
        shutil.copyfile(self.variables, variables)
        disk = ["-drive", f"format=raw,file=fat:rw:{self.volume}"] if self.volume else []
        files = []
        for index, (name, text) in enumerate(sorted(self.fw_cfg.items())):
            path = os.path.join(self.scratch, f"fw_cfg-{index}")
            with open(path, "w") as file:
                file.write(text)
            files += ["-fw_cfg", f"name={name},file={path}"]
        return ["qemu-system-x86_64", "-machine", "q35", "-m", "256", "-accel", self.accelerator,
                "-drive", f"if=pflash,format=raw,unit=0,readonly=on,file={self.code}",
                "-drive", f"if=pflash,format=raw,unit=1,file={variables}", *disk, *files,
                "-smbios", f"type=1,serial={self.serial_number}",
                "-net", "none", "-no-reboot", "-display", self.display,
                "-chardev", f"socket,id=serial0,path={self.serial_path},server=on,wait=on",
                "-serial", "chardev:serial0",
                "-monitor", f"unix:{self.monitor_path},server=on,wait=off"]

    def start(self):
        command = self.command()
        with open(os.path.join(self.out_dir, "qemu-command.txt"), "w") as saved:
            saved.write(" ".join(command) + "\n")
        self.qemu_log = open(os.path.join(self.out_dir, "qemu.log"), "wb")
        self.qemu = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=self.qemu_log, stderr=subprocess.STDOUT)
        # QEMU waits for the serial connection before the firmware runs (wait=on),
        # so nothing the firmware writes is lost.
        deadline = time.monotonic() + 20
        while True:
            try:
                self.serial = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
                self.serial.connect(self.serial_path)
                break
            except OSError:
                self.serial.close()
                if self.qemu.poll() is not None or time.monotonic() > deadline:
                    raise MachineError("QEMU did not open its serial socket; see qemu.log")
                time.sleep(0.05)
        self.started = time.monotonic()
        self.reader = threading.Thread(target=self._read_serial, daemon=True)
        self.reader.start()

    def _read_serial(self):
        with open(self.serial_log, "wb") as log:
            while True:
                try:
                    data = self.serial.recv(65536)
                except OSError:
                    return
                if not data:
                    return
                log.write(data)
                log.flush()
                with self.lock:
                    self.text += ANSI_ESCAPE.sub("", data.decode("latin-1"))

    def elapsed(self):
        return time.monotonic() - self.started

    def lines(self):
        with self.lock:
            return re.split(r"[\r\n]+", self.text)

    def wait_for(self, pattern, timeout, after=0):
        """Waits for a serial line matching pattern among lines[after:]; returns (index, match)."""
        regex = re.compile(pattern)
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            lines = self.lines()
            for index in range(after, len(lines)):
                match = regex.search(lines[index])
                if match:
                    return index, match
            if "X64 Exception Type" in self.text:
                raise MachineError("the firmware reported a CPU exception")
            if self.qemu.poll() is not None:
                raise MachineError(f"the machine powered off while waiting for /{pattern}/")
            time.sleep(0.05)
        raise MachineError(f"no serial line /{pattern}/ within {timeout:.0f} s")

    def monitor(self, command, timeout=10.0):
        return monitor_command(self.monitor_path, command, timeout)

    def press(self, *keys, gap=0.15):
        """Keys on the PS/2 keyboard (QEMU key names: f2, ret, a, shift-a, ...)."""
        for key in keys:
            self.monitor(f"sendkey {key}")
            time.sleep(gap)

    def type_text(self, text):
        self.press(*[("shift-" + c.lower()) if c.isupper() else c for c in text])

    def serial_keys(self, *keys, gap=0.3):
        """Keys on the serial terminal: names of SERIAL_KEYS, or plain text."""
        for key in keys:
            self.serial.sendall(SERIAL_KEYS.get(key, key.encode()))
            time.sleep(gap)

    def screenshot(self, name=None):
        """Pauses the machine for a consistent picture; saves <name>.png when a name is given."""
        path = os.path.join(self.scratch, "screen.ppm")
        if os.path.exists(path):
            os.remove(path)
        self.monitor("stop")
        try:
            self.monitor(f"screendump {path}")
        finally:
            self.monitor("cont")
        with open(path, "rb") as file:
            shot = Screenshot.from_ppm(file.read())
        if name:
            shot.save_png(os.path.join(self.out_dir, f"{name}.png"))
        return shot

    def wait_power_off(self, timeout):
        try:
            self.qemu.wait(timeout=timeout)
        except subprocess.TimeoutExpired:
            raise MachineError(f"the machine did not power off within {timeout:.0f} s")
        return self.qemu.returncode

    def stop(self):
        if self.qemu and self.qemu.poll() is None:
            self.qemu.terminate()
            try:
                self.qemu.wait(timeout=5)
            except subprocess.TimeoutExpired:
                self.qemu.kill()
                self.qemu.wait()
        if self.serial:
            self.serial.close()
        if self.reader:
            self.reader.join(timeout=2)
        if getattr(self, "qemu_log", None):
            self.qemu_log.close()
        shutil.rmtree(self.scratch, ignore_errors=True)
