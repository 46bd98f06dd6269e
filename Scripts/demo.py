#!/usr/bin/env python3
"""Plays KestUi's scenarios in real firmware (Debian's OVMF under QEMU) with real keys.

Each scenario boots OVMF with the boot-flow application, the platform
stand-in driver and UserInterface.efi on a FAT volume, waits for what the
pages draw (announced on the serial port), presses keys on the PS/2 keyboard
(QEMU monitor) or the serial terminal, takes screenshots and checks them: the
serial log, and pixels (text colours, the progress bar shown or hidden).

Writes <out>/<scenario>/serial.log, the screenshots <out>/*.png and an index
page <out>/index.html. Exit status: 0 when every check passed, 1 when one
failed, 2 when the images, the firmware or QEMU are missing.

  demo.py [--build-dir build/efi] [--out out/demo] [--only NAME ...]
  demo.py --interactive      a QEMU window to press the keys yourself
"""
import argparse
import html
import os
import re
import shutil
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from kestui_machine import Machine, MachineError  # noqa: E402

REPO = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
IMAGES = {"BOOTX64.EFI": os.path.join("Platform", "BootFlowApp", "BootFlowApp.efi"),
          "KestPlatform.efi": os.path.join("Platform", "StandInDriver", "KestPlatform.efi"),
          "UserInterface.efi": os.path.join("Drivers", "UserInterface", "UserInterface.efi")}
SERIAL_NUMBER = "KESTUI-DEMO-01"
RIGHT_PASSWORD = "kestrel"
WRONG_PASSWORD = "falcon"
WELCOME_TEXT = "Welcome to KestUi - a demo platform on OVMF"

# Colours the pages draw (0xRRGGBB).
WHITE = 0xFFFFFF
RED = 0xDC5034
GREEN = 0x7AB800
WRONG_FIELD = 0xB7295A
BAR_FILL = 0xFFFFFF
BAR_MIN_RUN = 200  # pixels: a visible bar of any progress above ~30 % is longer; no text is

OUTCOMES = {0: ("BIOS Update successful. Rebooting your system.", GREEN),
            1: ("BIOS Update failed. Rebooting your system.", RED),
            2: ("BIOS Update blocked due to Intel AntiTheft feature overide.", RED),
            3: ("BIOS Update blocked due to unsupported downgrade.", RED),
            4: ("Downgrading to a BIOS without Secure Boot abilities was blocked.", RED),
            5: ("BIOS Update successful.", GREEN),
            6: ("BIOS Update failed.", RED)}

BASE_CONFIG = {"mode": "welcome", "countdown": "1", "welcome": WELCOME_TEXT, "admin-prompt": "1",
               "password": RIGHT_PASSWORD, "steps": "25", "step-ms": "200"}

# Generous: TCG on a busy two-core machine runs the firmware several times slower than KVM.
BOOT_TIMEOUT = 90
STEP_TIMEOUT = 30


def draw(page, *texts):
    """A serial pattern for a draw of page that shows each of texts (in any order)."""
    return rf"KESTUI-DRAW {page}\b" + "".join(rf"(?=.*\|\s*{re.escape(text)})" for text in texts)


class Scenario:
    """A boot with its configuration; run() plays it on a machine and records checks."""

    name = ""
    title = ""
    config = {}

    def __init__(self, out_dir):
        self.out_dir = out_dir
        self.checks = []   # (passed, text)
        self.shots = []    # (file name, caption)
        self.machine = None

    def check(self, passed, text):
        self.checks.append((bool(passed), text))
        print(f"  {'PASS' if passed else 'FAIL'} {text}", flush=True)
        return passed

    def expect(self, pattern, timeout, text, after=0):
        """Waits for a serial line; passes the check when it comes (a timeout ends the scenario failed)."""
        index, match = self.machine.wait_for(pattern, timeout, after)
        self.check(True, text)
        return index, match

    def shot(self, name, caption):
        picture = self.machine.screenshot(os.path.join("..", name))
        self.shots.append((f"{name}.png", caption))
        return picture

    def play(self):
        raise NotImplementedError


class WelcomeToSetup(Scenario):
    name = "setup"
    title = "F2 on the serial terminal, the administrator prompt, a wrong and the right password, Setup"
    config = dict(BASE_CONFIG)

    def play(self):
        m = self.machine
        m.wait_for(draw("welcome", WELCOME_TEXT), BOOT_TIMEOUT)
        picture = self.shot("01-welcome", "The welcome page: logo, welcome text, no bar before a key")
        self.check(picture.longest_run(BAR_FILL) < BAR_MIN_RUN, "welcome page: no progress bar before a key")
        self.check(picture.count_colour(WHITE) > 500, "welcome page: white text on the screen")
        # Serial-terminal keys reach the driver's key notification at once.
        m.serial_keys("f2")
        m.wait_for(draw("welcome", "Preparing to enter BIOS Setup"), STEP_TIMEOUT)
        m.wait_for(draw("welcome", "Preparing to enter BIOS Setup", "bar="), STEP_TIMEOUT)
        picture = self.shot("02-preparing-setup", "After F2: \"Preparing to enter BIOS Setup\", the bar shown")
        self.check(picture.longest_run(BAR_FILL) >= BAR_MIN_RUN, "after F2: the progress bar is shown")
        m.wait_for(draw("prompt", "Admin Unlock"), BOOT_TIMEOUT)
        index, _ = self.expect(draw("prompt", f"{SERIAL_NUMBER} -3B7C"), STEP_TIMEOUT,
                               f"prompt caption \"{SERIAL_NUMBER} -3B7C\" from SMBIOS type 1")
        self.shot("03-admin-prompt", f"The administrator prompt, its caption from QEMU's SMBIOS serial {SERIAL_NUMBER}")
        m.type_text(WRONG_PASSWORD)
        m.wait_for(draw("prompt", f"field={len(WRONG_PASSWORD)}"), STEP_TIMEOUT, after=index)
        m.press("ret")
        index, _ = m.wait_for(draw("prompt", "Password is incorrect, re-enter the password"), STEP_TIMEOUT, after=index)
        picture = self.shot("04-password-incorrect", "A wrong password: \"Password is incorrect, re-enter the password\"")
        self.check(picture.count_colour(WRONG_FIELD) > 100, "after a wrong password: the field is coloured 0xB7295A")
        m.type_text(RIGHT_PASSWORD)
        m.press("ret")
        self.expect(draw("setup"), STEP_TIMEOUT, "the right password opens Setup", after=index)
        self.shot("05-setup", "The right password: the platform's Setup screen")
        m.press("esc")
        m.wait_for(r"KESTUI-BOOT welcome finished", STEP_TIMEOUT)
        self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the boot flow ends and powers off")


class BootMenuFromSerial(Scenario):
    name = "bootmenu"
    title = "F12 on the PS/2 keyboard (read by the progress poll), the one-time boot menu"
    config = dict(BASE_CONFIG, **{"admin-prompt": "0"})

    def play(self):
        m = self.machine
        m.wait_for(draw("welcome", WELCOME_TEXT), BOOT_TIMEOUT)
        # PS/2 keys are not notified (toggle state 0xC0): the boot flow's progress poll reads them.
        m.press("f12")
        m.wait_for(draw("welcome", "Preparing one-time boot menu"), STEP_TIMEOUT)
        picture = self.shot("06-preparing-boot-menu", "After F12 on the PS/2 keyboard: \"Preparing one-time boot menu\"")
        self.check(picture.count_colour(WHITE) > 500, "after F12: the message is drawn")
        m.wait_for(draw("bootmenu"), BOOT_TIMEOUT)
        self.shot("07-boot-menu", "The one-time boot menu, with OVMF's boot options")
        m.serial_keys("down", "ret")
        _, match = m.wait_for(r"KESTUI-PLATFORM boot menu (chose \d+|left)", STEP_TIMEOUT)
        self.check("chose 1" in match.group(0), "boot menu: Down then Enter chose the second entry")
        self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the boot flow ends and powers off")


class CountdownCloses(Scenario):
    name = "countdown"
    title = "No key: the welcome page closes on its own after its countdown"
    config = dict(BASE_CONFIG, steps="5", **{"step-ms": "100"})

    def play(self):
        m = self.machine
        m.wait_for(r"KESTUI-BOOT initialised", BOOT_TIMEOUT)
        started = time.monotonic()
        _, match = m.wait_for(r"KESTUI-BOOT event loop ended: (.*)", STEP_TIMEOUT)
        waited = time.monotonic() - started
        self.check(match.group(1).strip() == "Success", "the event loop ends with success (the page closed itself)")
        # Countdown 1 gives 5 seconds: the page closes at the 6th counted clock second.
        self.check(4.0 <= waited <= 20.0, f"the page closed after {waited:.1f} s of its countdown (5 s + 1 tick)")
        m.wait_for(r"KESTUI-BOOT welcome finished", STEP_TIMEOUT)
        self.check(not any("KESTUI-DRAW prompt" in line for line in m.lines()), "no prompt without a key")
        self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the boot flow ends and powers off")


class ThreeWrongPasswords(Scenario):
    name = "lockout"
    title = "Three wrong passwords: the machine powers itself off"
    config = dict(BASE_CONFIG, steps="10", **{"step-ms": "200"})

    def play(self):
        m = self.machine
        m.wait_for(draw("welcome", WELCOME_TEXT), BOOT_TIMEOUT)
        m.press("f2")
        index, _ = m.wait_for(draw("prompt", "Admin Unlock"), BOOT_TIMEOUT)
        for attempt in range(3):
            m.type_text(WRONG_PASSWORD)
            m.press("ret")
            index, _ = m.wait_for(draw("prompt", "Password is incorrect"), STEP_TIMEOUT, after=index + 1)
        self.shot("08-locked-out", "After the third wrong password: the buttons go, the machine powers off")
        code = m.wait_power_off(STEP_TIMEOUT)
        self.check(code == 0, "the machine powered itself off")
        lines = m.lines()
        self.check(not any("KESTUI-BOOT welcome finished" in line for line in lines),
                   "the boot flow never went on (the UI driver shut down)")
        self.check(not any("KESTUI-DRAW setup" in line for line in lines), "Setup was never shown")


class FlashOutcomes(Scenario):
    name = "flash"
    title = "The firmware-update page at 50 % and each outcome"
    config = {"mode": "flash", "step-ms": "60", "outcomes": ",".join(str(code) for code in OUTCOMES)}

    def play(self):
        m = self.machine
        m.wait_for(r"KESTUI-BOOT flash halfway", BOOT_TIMEOUT)
        index, _ = m.wait_for(draw("flash", "50%"), STEP_TIMEOUT)
        picture = self.shot("09-flash-50", "The flash page at 50 %: red warning, bar, percentage")
        self.check(picture.count_colour(RED) > 300, "flash page: the warning is red")
        self.check(picture.longest_run(BAR_FILL) >= BAR_MIN_RUN, "flash page: the bar is drawn")
        for code, (text, colour) in OUTCOMES.items():
            index, _ = m.wait_for(draw("flash", text), BOOT_TIMEOUT, after=index)
            picture = self.shot(f"10-flash-outcome-{code}", f"Outcome {code}: \"{text}\"")
            other = RED if colour == GREEN else GREEN
            self.check(picture.count_colour(colour) > 300 and picture.count_colour(other) == 0,
                       f"outcome {code}: the message is {'green' if colour == GREEN else 'red'}")
        m.wait_for(r"KESTUI-BOOT flash finished", BOOT_TIMEOUT)
        self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the flash client ends and powers off")


SCENARIOS = [WelcomeToSetup, BootMenuFromSerial, CountdownCloses, ThreeWrongPasswords, FlashOutcomes]


def find_images(build_dir):
    images = {}
    for name, relative in IMAGES.items():
        path = os.path.join(build_dir, relative)
        if not os.path.isfile(path):
            print(f"demo: {path} is missing; build the firmware tree first (Scripts/build.sh)", file=sys.stderr)
            sys.exit(2)
        images[name] = path
    for tool in ("qemu-system-x86_64",):
        if shutil.which(tool) is None:
            print(f"demo: {tool} is missing (Debian package qemu-system-x86)", file=sys.stderr)
            sys.exit(2)
    return images


def stage_volume(directory, images, config):
    shutil.rmtree(directory, ignore_errors=True)
    os.makedirs(os.path.join(directory, "EFI", "BOOT"))
    os.makedirs(os.path.join(directory, "kestui"))
    shutil.copyfile(images["BOOTX64.EFI"], os.path.join(directory, "EFI", "BOOT", "BOOTX64.EFI"))
    for name in ("KestPlatform.efi", "UserInterface.efi"):
        shutil.copyfile(images[name], os.path.join(directory, "kestui", name))
    with open(os.path.join(directory, "kestui", "demo.cfg"), "w") as file:
        file.write("".join(f"{key}={value}\n" for key, value in config.items()))


def run_scenario(kind, images, out_dir):
    scenario_dir = os.path.join(out_dir, kind.name)
    os.makedirs(scenario_dir, exist_ok=True)
    scenario = kind(scenario_dir)
    print(f"demo: {kind.name}: {kind.title}", flush=True)
    stage_volume(os.path.join(scenario_dir, "fat"), images, kind.config)
    scenario.machine = Machine(os.path.join(scenario_dir, "fat"), scenario_dir, SERIAL_NUMBER)
    started = time.monotonic()
    try:
        scenario.machine.start()
        scenario.play()
    except MachineError as error:
        scenario.check(False, f"{error}")
        tail = [line for line in scenario.machine.lines() if line.strip()][-8:]
        print("  last serial lines:\n    " + "\n    ".join(tail), flush=True)
    finally:
        scenario.machine.stop()
    print(f"demo: {kind.name}: {time.monotonic() - started:.1f} s", flush=True)
    return scenario


def write_index(out_dir, scenarios):
    parts = ["<!doctype html><meta charset='utf-8'><title>KestUi in OVMF</title>",
             "<style>body{font-family:sans-serif;background:#222;color:#eee;margin:2em}"
             "img{width:640px;border:1px solid #555;margin:.3em}figure{display:inline-block;margin:0 1em 1em 0}"
             "figcaption{max-width:640px}.fail{color:#f66}.pass{color:#8c8}</style>",
             "<h1>KestUi in real firmware (OVMF under QEMU)</h1>",
             f"<p>Taken {html.escape(time.strftime('%Y-%m-%d %H:%M:%S'))} by Scripts/demo.py.</p>"]
    for scenario in scenarios:
        parts.append(f"<h2>{html.escape(scenario.title)}</h2>")
        for file, caption in scenario.shots:
            parts.append(f"<figure><a href='{file}'><img src='{file}'></a>"
                         f"<figcaption>{html.escape(caption)}</figcaption></figure>")
        parts.append("<ul>" + "".join(f"<li class='{'pass' if ok else 'fail'}'>{'PASS' if ok else 'FAIL'} "
                                      f"{html.escape(text)}</li>" for ok, text in scenario.checks) + "</ul>")
        parts.append(f"<p><a href='{scenario.machine_dir}/serial.log'>serial log</a></p>")
    with open(os.path.join(out_dir, "index.html"), "w") as file:
        file.write("\n".join(parts) + "\n")


def interactive(images, out_dir):
    directory = os.path.join(out_dir, "interactive")
    os.makedirs(directory, exist_ok=True)
    config = dict(BASE_CONFIG, countdown="2", steps="50")
    stage_volume(os.path.join(directory, "fat"), images, config)
    display = "gtk" if os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY") else None
    if display is None:
        print("demo: --interactive needs a display (DISPLAY is not set)", file=sys.stderr)
        return 2
    machine = Machine(os.path.join(directory, "fat"), directory, SERIAL_NUMBER, display=display)
    print(f"demo: a QEMU window opens; press F2, F9 or F12 while the welcome page is up. "
          f"The password is '{RIGHT_PASSWORD}'. Serial log: {machine.serial_log}")
    machine.start()
    try:
        machine.qemu.wait()
    finally:
        machine.stop()
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build-dir", default=os.path.join(REPO, "build", "efi"))
    parser.add_argument("--out", default=os.path.join(REPO, "out", "demo"))
    parser.add_argument("--only", nargs="*", help="scenario names: " + ", ".join(kind.name for kind in SCENARIOS))
    parser.add_argument("--interactive", action="store_true", help="open a QEMU window for a person")
    arguments = parser.parse_args()

    images = find_images(os.path.abspath(arguments.build_dir))
    out_dir = os.path.abspath(arguments.out)
    if arguments.interactive:
        return interactive(images, out_dir)
    shutil.rmtree(out_dir, ignore_errors=True)
    os.makedirs(out_dir)
    kinds = [kind for kind in SCENARIOS if not arguments.only or kind.name in arguments.only]
    scenarios = []
    for kind in kinds:
        scenario = run_scenario(kind, images, out_dir)
        scenario.machine_dir = kind.name
        scenarios.append(scenario)
    write_index(out_dir, scenarios)
    failed = [text for scenario in scenarios for ok, text in scenario.checks if not ok]
    passed = sum(1 for scenario in scenarios for ok, _ in scenario.checks if ok)
    print(f"demo: {passed} checks passed, {len(failed)} failed; screenshots and index.html in {out_dir}")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
