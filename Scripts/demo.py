#!/usr/bin/env python3
"""Plays KestUi's scenarios in real firmware (OVMF under QEMU) with real keys.

Two firmwares:
- edk2 (default): OVMF built from Debian's edk2 source with KestUi in its flash
  (Scripts/edk2-build.sh, build/edk2/ovmf/). The DXE dispatcher starts the UI
  driver and the platform stand-in driver; the boot manager runs the welcome
  flow as a SysPrep#### application once the consoles are up, then boots on.
  The configuration goes to the firmware as QEMU's fw_cfg file
  "opt/kestui/demo.cfg". The boot menu boots the chosen option (the UEFI
  Shell), Setup is OVMF's own front page, and without a key the machine boots
  on to the Shell. edk2-binary is the same firmware with UserInterfaceBinary.inf
  (build/edk2/ovmf-binary/).
- debian: Debian's OVMF with the boot-flow application, the platform stand-in
  driver and UserInterface.efi of the firmware tree (build/efi) on a FAT
  volume; the application loads the drivers, plays the flow and powers off.
  The boot menu and Setup are the stand-ins' own screens. Quicker to build.

Each scenario waits for what the pages draw (announced on the serial port),
presses keys on the PS/2 keyboard (QEMU monitor) or the serial terminal, takes
screenshots and checks them: the serial log, and pixels (text colours, the
progress bar shown or hidden).

Writes <out>/<scenario>/serial.log, the screenshots <out>/*.png and an index
page <out>/index.html. Exit status: 0 when every check passed, 1 when one
failed, 2 when the images, the firmware or QEMU are missing.

  demo.py [--firmware edk2|edk2-binary|debian] [--build-dir build/efi] [--edk2-dir build/edk2]
          [--out out/demo] [--only NAME ...]
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
from kestui_machine import OVMF_CODE, OVMF_VARS, Machine, MachineError  # noqa: E402

REPO = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
IMAGES = {"BOOTX64.EFI": os.path.join("Platform", "BootFlowApp", "BootFlowApp.efi"),
          "KestPlatform.efi": os.path.join("Platform", "StandInDriver", "KestPlatform.efi"),
          "UserInterface.efi": os.path.join("Drivers", "UserInterface", "UserInterface.efi")}
FIRMWARE_FOLDERS = {"edk2": "ovmf", "edk2-binary": "ovmf-binary"}
CONFIG_FILE = "opt/kestui/demo.cfg"
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

    def __init__(self, out_dir, in_flash):
        self.out_dir = out_dir
        self.in_flash = in_flash  # KestUi in the firmware's flash: the boot goes on after the flow
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

    def reach_shell(self, name=None, caption=None):
        """The firmware booted on to the UEFI Shell: a screenshot, then the Shell powers the machine off."""
        m = self.machine
        m.wait_for(r"Press ESC in \d+ seconds|Shell>", BOOT_TIMEOUT)
        m.serial_keys("esc")
        m.wait_for(r"Shell>", STEP_TIMEOUT)
        self.check(True, "the UEFI Shell is reached")
        if name:
            self.shot(name, caption)
        m.serial_keys(*"reset -s", "ret", gap=0.05)
        self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the Shell powers the machine off (reset -s)")

    def boot_goes_on(self, name=None, caption=None):
        """The end of the flow: the boot-flow application powers off; in flash, the firmware boots on."""
        m = self.machine
        if self.in_flash:
            m.wait_for(r"KESTUI-BOOT SysPrep done", STEP_TIMEOUT)
            self.check(True, "the welcome flow returns to the boot manager")
            self.reach_shell(name, caption)
        else:
            self.check(m.wait_power_off(STEP_TIMEOUT) == 0, "the boot flow ends and powers off")


class WelcomeToSetup(Scenario):
    name = "setup"
    title = "F2 on the serial terminal, the administrator prompt, a wrong and the right password, Setup"
    config = dict(BASE_CONFIG)

    def play(self):
        m = self.machine
        m.wait_for(draw("welcome", "image=", WELCOME_TEXT), BOOT_TIMEOUT)
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
        if self.in_flash:
            # The boot flow enters the firmware's own front page (UiApp) once the welcome flow is over.
            self.expect(r"KESTUI-BOOT entering the front page", STEP_TIMEOUT, "the right password enters Setup")
            self.expect(r"Boot Maintenance Manager", BOOT_TIMEOUT, "OVMF's front page is shown (UiApp)")
            time.sleep(1.0)
            self.shot("05-front-page", "The right password: OVMF's own front page, started as its UiApp boot option")
            return
        self.expect(draw("setup"), STEP_TIMEOUT, "the right password opens Setup", after=index)
        self.shot("05-setup", "The right password: the platform's Setup screen")
        m.press("esc")
        m.wait_for(r"KESTUI-BOOT welcome finished", STEP_TIMEOUT)
        self.boot_goes_on()


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
        _, menu = m.wait_for(draw("bootmenu"), BOOT_TIMEOUT)
        self.shot("07-boot-menu", "The one-time boot menu, with OVMF's boot options")
        if self.in_flash:
            # The firmware's Boot#### options, as drawn: title first, the selected one after "> ".
            entries = [field.strip().lstrip("> ") for field in menu.string.split("|")[2:]]
            self.check("EFI Internal Shell" in entries, f"boot menu lists the firmware's options: {entries}")
            downs = entries.index("EFI Internal Shell") if "EFI Internal Shell" in entries else 0
            m.serial_keys(*(["down"] * downs), "ret")
            _, match = m.wait_for(r"KESTUI-PLATFORM boot menu (chose \d+|left)", STEP_TIMEOUT)
            self.check(f"chose {downs}" in match.group(0), "boot menu: the Shell's entry chosen with Down and Enter")
            self.expect(r'KESTUI-BOOT Boot[0-9a-f]{4} "EFI Internal Shell" loaded: Success', STEP_TIMEOUT,
                        "the chosen option is loaded (LoadImage of its device path)")
            self.reach_shell("07b-shell-from-boot-menu", "F12, then the Shell chosen in the boot menu: "
                             "the UEFI Shell, started with LoadImage/StartImage")
            return
        m.serial_keys("down", "ret")
        _, match = m.wait_for(r"KESTUI-PLATFORM boot menu (chose \d+|left)", STEP_TIMEOUT)
        self.check("chose 1" in match.group(0), "boot menu: Down then Enter chose the second entry")
        self.boot_goes_on()


class CountdownCloses(Scenario):
    name = "countdown"
    title = "No key: the welcome page closes on its own after its countdown"
    config = dict(BASE_CONFIG, steps="5", **{"step-ms": "100"})

    def play(self):
        m = self.machine
        if self.in_flash:
            m.wait_for(draw("welcome", "image=", WELCOME_TEXT), BOOT_TIMEOUT)
            self.shot("00-welcome-at-power-on", "Power-on: the DXE dispatcher started KestUi from the flash, "
                      "the boot manager's SysPrep option shows the welcome page")
        m.wait_for(r"KESTUI-BOOT initialised", BOOT_TIMEOUT)
        started = time.monotonic()
        _, match = m.wait_for(r"KESTUI-BOOT event loop ended: (.*)", STEP_TIMEOUT)
        waited = time.monotonic() - started
        self.check(match.group(1).strip() == "Success", "the event loop ends with success (the page closed itself)")
        # Countdown 1 gives 5 seconds: the page closes at the 6th counted clock second.
        self.check(4.0 <= waited <= 20.0, f"the page closed after {waited:.1f} s of its countdown (5 s + 1 tick)")
        m.wait_for(r"KESTUI-BOOT welcome finished", STEP_TIMEOUT)
        self.check(not any("KESTUI-DRAW prompt" in line for line in m.lines()), "no prompt without a key")
        self.boot_goes_on("11-shell-after-countdown", "No key: the page closed on its countdown and the firmware "
                          "booted on to the UEFI Shell")


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
        self.check(not any("KESTUI-DRAW setup" in line or "entering the front page" in line for line in lines),
                   "Setup was never shown")


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
        self.boot_goes_on()


SCENARIOS = [WelcomeToSetup, BootMenuFromSerial, CountdownCloses, ThreeWrongPasswords, FlashOutcomes]


def find_firmware(arguments):
    """What the machines boot: {"code", "variables", "images" (debian only), "in_flash"}."""
    if shutil.which("qemu-system-x86_64") is None:
        print("demo: qemu-system-x86_64 is missing (Debian package qemu-system-x86)", file=sys.stderr)
        sys.exit(2)
    if arguments.firmware in FIRMWARE_FOLDERS:
        folder = os.path.join(os.path.abspath(arguments.edk2_dir), FIRMWARE_FOLDERS[arguments.firmware])
        code, variables = os.path.join(folder, "OVMF_CODE.fd"), os.path.join(folder, "OVMF_VARS.fd")
        for path in (code, variables):
            if not os.path.isfile(path):
                print(f"demo: {path} is missing: build OVMF with KestUi first (Scripts/edk2-build.sh; "
                      f"its logs are in {os.path.join(arguments.edk2_dir, 'logs')})", file=sys.stderr)
                sys.exit(2)
        return {"code": code, "variables": variables, "images": None, "in_flash": True}
    images = {}
    for name, relative in IMAGES.items():
        path = os.path.join(os.path.abspath(arguments.build_dir), relative)
        if not os.path.isfile(path):
            print(f"demo: {path} is missing; build the firmware tree first (Scripts/build.sh)", file=sys.stderr)
            sys.exit(2)
        images[name] = path
    return {"code": OVMF_CODE, "variables": OVMF_VARS, "images": images, "in_flash": False}


def make_machine(firmware, directory, config, display="none"):
    """A machine for one boot: in flash the configuration goes through fw_cfg, else onto the staged volume."""
    os.makedirs(directory, exist_ok=True)
    volume, files = None, {}
    text = "".join(f"{key}={value}\n" for key, value in config.items())
    if firmware["in_flash"]:
        files[CONFIG_FILE] = text
    else:
        volume = os.path.join(directory, "fat")
        stage_volume(volume, firmware["images"], config)
    return Machine(volume, directory, SERIAL_NUMBER, display=display, code=firmware["code"],
                   variables=firmware["variables"], fw_cfg=files)


def stage_volume(directory, images, config):
    shutil.rmtree(directory, ignore_errors=True)
    os.makedirs(os.path.join(directory, "EFI", "BOOT"))
    os.makedirs(os.path.join(directory, "kestui"))
    shutil.copyfile(images["BOOTX64.EFI"], os.path.join(directory, "EFI", "BOOT", "BOOTX64.EFI"))
    for name in ("KestPlatform.efi", "UserInterface.efi"):
        shutil.copyfile(images[name], os.path.join(directory, "kestui", name))
    with open(os.path.join(directory, "kestui", "demo.cfg"), "w") as file:
        file.write("".join(f"{key}={value}\n" for key, value in config.items()))


def run_scenario(kind, firmware, out_dir):
    scenario_dir = os.path.join(out_dir, kind.name)
    os.makedirs(scenario_dir, exist_ok=True)
    scenario = kind(scenario_dir, firmware["in_flash"])
    print(f"demo: {kind.name}: {kind.title}", flush=True)
    scenario.machine = make_machine(firmware, scenario_dir, kind.config)
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


def interactive(firmware, out_dir):
    directory = os.path.join(out_dir, "interactive")
    config = dict(BASE_CONFIG, countdown="2", steps="50")
    display = "gtk" if os.environ.get("DISPLAY") or os.environ.get("WAYLAND_DISPLAY") else None
    if display is None:
        print("demo: --interactive needs a display (DISPLAY is not set)", file=sys.stderr)
        return 2
    machine = make_machine(firmware, directory, config, display=display)
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
    parser.add_argument("--firmware", choices=["edk2", "edk2-binary", "debian"], default="edk2",
                        help="OVMF with KestUi in its flash (edk2, edk2-binary) or Debian's OVMF with the "
                        "images on a disk (debian)")
    parser.add_argument("--edk2-dir", default=os.path.join(REPO, "build", "edk2"))
    parser.add_argument("--build-dir", default=os.path.join(REPO, "build", "efi"))
    parser.add_argument("--out", default=os.path.join(REPO, "out", "demo"))
    parser.add_argument("--only", nargs="*", help="scenario names: " + ", ".join(kind.name for kind in SCENARIOS))
    parser.add_argument("--interactive", action="store_true", help="open a QEMU window for a person")
    arguments = parser.parse_args()

    firmware = find_firmware(arguments)
    out_dir = os.path.abspath(arguments.out)
    if arguments.interactive:
        return interactive(firmware, out_dir)
    shutil.rmtree(out_dir, ignore_errors=True)
    os.makedirs(out_dir)
    kinds = [kind for kind in SCENARIOS if not arguments.only or kind.name in arguments.only]
    scenarios = []
    for kind in kinds:
        scenario = run_scenario(kind, firmware, out_dir)
        scenario.machine_dir = kind.name
        scenarios.append(scenario)
    write_index(out_dir, scenarios)
    failed = [text for scenario in scenarios for ok, text in scenario.checks if not ok]
    passed = sum(1 for scenario in scenarios for ok, _ in scenario.checks if ok)
    print(f"demo: {passed} checks passed, {len(failed)} failed; screenshots and index.html in {out_dir}")
    return 1 if failed or not passed else 0


if __name__ == "__main__":
    sys.exit(main())
