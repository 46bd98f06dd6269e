#!/usr/bin/env python3
"""Runs the firmware-side test of UserInterface.efi in OVMF under QEMU.

Stages a FAT volume with the test application as \\EFI\\BOOT\\BOOTX64.EFI and
the driver as \\UserInterface.efi, boots it with a private copy of the OVMF
variable store, and reads the application's report from the serial port.
Nothing is built here: the images come from an existing firmware build tree.

Exit status: 0 when the report is complete and nothing failed; 1 on a failed
check, a missing or inconsistent report, a crash or a hang; 2 when the images,
the firmware or QEMU are missing.

Logs, the staged volume, a screenshot of the report (screen.png) and one of
each page the app holds on the screen (<name>.png) go to out/ovmf/.
"""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import kestui_machine  # noqa: E402

REPO = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
OUT = os.path.join(REPO, "out", "ovmf")
OVMF_CODE = os.environ.get("OVMF_CODE", "/usr/share/OVMF/OVMF_CODE_4M.fd")
OVMF_VARS = os.environ.get("OVMF_VARS", "/usr/share/OVMF/OVMF_VARS_4M.fd")

DRIVER_IMAGE = os.path.join("Drivers", "UserInterface", "UserInterface.efi")
TEST_APP_IMAGE = os.path.join("Platform", "OvmfTestApp", "OvmfTestApp.efi")

ANSI_ESCAPE = kestui_machine.ANSI_ESCAPE
REPORT_LINE = re.compile(r"KESTUI-TEST (PASS|FAIL|DONE)\b.*")
# The app announces each page it holds on the screen for a screenshot.
SCREEN_LINE = re.compile(r"KESTUI-SCREEN ([A-Za-z0-9-]+)")
DONE_LINE = re.compile(r"KESTUI-TEST DONE (\d+) passed, (\d+) failed$")
CPU_EXCEPTION = "X64 Exception Type"


def setup_error(message):
    print(f"ovmf-test: {message}", file=sys.stderr)
    sys.exit(2)


def find_inputs(build_dir, driver=None):
    images = {}
    for name, relative in (("driver", DRIVER_IMAGE), ("test app", TEST_APP_IMAGE)):
        path = os.path.join(build_dir, relative)
        if name == "driver" and driver:
            path = driver
            if not os.path.isfile(path):
                setup_error(f"driver image {path} is missing; build it first (Scripts/edk2-build.sh for the "
                            f"EDK II-built images: see build/edk2/logs/)")
            images[name] = path
            continue
        if not os.path.isfile(path):
            setup_error(f"{name} image {path} is missing; configure and build the firmware tree first:\n"
                        f"  cmake -S {REPO} -B {build_dir} -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/EfiToolchain.cmake\n"
                        f"  ninja -C {build_dir}")
        images[name] = path
    for path in (OVMF_CODE, OVMF_VARS):
        if not os.path.isfile(path):
            setup_error(f"{path} is missing (Debian package 'ovmf')")
    if shutil.which("qemu-system-x86_64") is None:
        setup_error("qemu-system-x86_64 is missing (Debian package 'qemu-system-x86')")
    return images


def stage_volume(images):
    """A fresh FAT folder: the app where OVMF's boot manager looks for removable media."""
    volume = os.path.join(OUT, "fat")
    shutil.rmtree(volume, ignore_errors=True)
    os.makedirs(os.path.join(volume, "EFI", "BOOT"))
    shutil.copyfile(images["test app"], os.path.join(volume, "EFI", "BOOT", "BOOTX64.EFI"))
    shutil.copyfile(images["driver"], os.path.join(volume, "UserInterface.efi"))
    return volume


def kvm_usable():
    return os.access("/dev/kvm", os.R_OK | os.W_OK)


def qemu_command(accelerator, volume, variables, serial_log, debug_log, monitor):
    return ["qemu-system-x86_64", "-machine", "q35", "-m", "256", "-accel", accelerator,
            "-drive", f"if=pflash,format=raw,unit=0,readonly=on,file={OVMF_CODE}",
            "-drive", f"if=pflash,format=raw,unit=1,file={variables}",
            "-drive", f"format=raw,file=fat:rw:{volume}",
            # The UI driver's password prompt shows the SMBIOS serial number.
            "-smbios", "type=1,serial=KESTUI-OVMF-01",
            "-net", "none", "-serial", f"file:{serial_log}",
            "-debugcon", f"file:{debug_log}", "-global", "isa-debugcon.iobase=0x402",
            "-display", "none", "-no-reboot",
            "-monitor", f"unix:{monitor},server=on,wait=off"]


def monitor_command(monitor, command, timeout=5.0):
    """Sends one command to QEMU's human monitor and returns its answer ('' when unreachable)."""
    try:
        return kestui_machine.monitor_command(monitor, command, timeout)
    except (OSError, kestui_machine.MachineError):
        return ""


def read_text(path):
    try:
        with open(path, "rb") as file:
            return file.read().decode("utf-8", errors="replace")
    except FileNotFoundError:
        return ""


def read_report(serial_log):
    """Returns the serial output without terminal escapes, and its report lines."""
    text = ANSI_ESCAPE.sub("", read_text(serial_log))
    lines = []
    for raw in re.split(r"[\r\n]+", text):
        match = REPORT_LINE.search(raw)
        if match:
            lines.append(match.group(0).rstrip())
    return text, lines


def run(accelerator, images, timeout):
    """Boots the staged volume once; returns what the run produced."""
    os.makedirs(OUT, exist_ok=True)
    serial_log = os.path.join(OUT, "serial.log")
    debug_log = os.path.join(OUT, "debug.log")
    qemu_log = os.path.join(OUT, "qemu.log")
    screenshot = os.path.join(OUT, "screen.png")
    # Every screenshot of an earlier run goes, whatever pages it held.
    stale_pages = [os.path.join(OUT, name) for name in os.listdir(OUT) if name.endswith(".png")]
    for stale in [serial_log, debug_log, qemu_log, screenshot] + stale_pages:
        if os.path.exists(stale):
            os.remove(stale)
    pages = []
    volume = stage_volume(images)

    with tempfile.TemporaryDirectory(prefix="kestui-ovmf-") as scratch:
        variables = os.path.join(scratch, "OVMF_VARS.fd")
        shutil.copyfile(OVMF_VARS, variables)
        monitor = os.path.join(scratch, "monitor.sock")
        command = qemu_command(accelerator, volume, variables, serial_log, debug_log, monitor)
        with open(os.path.join(OUT, "qemu-command.txt"), "w") as saved:
            saved.write(" ".join(command) + "\n")

        started = time.monotonic()
        with open(qemu_log, "wb") as qemu_output:
            qemu = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=qemu_output,
                                    stderr=subprocess.STDOUT)
        done_at = None
        crashed = False
        timed_out = False
        kvm_failed = False
        while qemu.poll() is None:
            elapsed = time.monotonic() - started
            if elapsed > timeout:
                timed_out = True
                break
            # Some hosts offer /dev/kvm but cannot run the firmware on it; QEMU
            # then stops the guest with an internal error.
            if accelerator == "kvm" and "KVM internal error" in read_text(qemu_log):
                kvm_failed = True
                break
            text, lines = read_report(serial_log)
            for name in SCREEN_LINE.findall(text):
                page = os.path.join(OUT, f"{name}.png")
                if page not in pages:
                    pages.append(page)
                    monitor_command(monitor, f"screendump {page} -f png")
            if done_at is None and any(DONE_LINE.match(line) for line in lines):
                done_at = elapsed
                # The app holds its screen for a moment before it powers off.
                monitor_command(monitor, f"screendump {screenshot} -f png")
            if CPU_EXCEPTION in text:
                crashed = True
                time.sleep(1.0)  # let the register dump reach the log
                break
            time.sleep(0.1)

        if qemu.poll() is None:
            qemu.terminate()
            try:
                qemu.wait(timeout=5)
            except subprocess.TimeoutExpired:
                qemu.kill()
                qemu.wait()
        ran_for = time.monotonic() - started

    serial_text, lines = read_report(serial_log)
    # Or QEMU could not set KVM up at all and ended before the firmware ran.
    if accelerator == "kvm" and not lines and re.search(r"kvm", read_text(qemu_log), re.IGNORECASE):
        kvm_failed = True
    return {"lines": lines, "serial_text": serial_text, "exit_code": qemu.returncode,
            "qemu_output": read_text(qemu_log).strip(), "accelerator": accelerator, "kvm_failed": kvm_failed,
            "done_at": done_at, "ran_for": ran_for, "crashed": crashed, "timed_out": timed_out,
            "screenshot": screenshot if os.path.exists(screenshot) else None,
            "pages": [page for page in pages if os.path.exists(page)]}


def verdict(result, timeout):
    """Returns the list of reasons why the run failed; empty when it passed."""
    lines = result["lines"]
    passes = sum(1 for line in lines if line.startswith("KESTUI-TEST PASS"))
    failures = sum(1 for line in lines if line.startswith("KESTUI-TEST FAIL"))
    done = [DONE_LINE.match(line) for line in lines if line.startswith("KESTUI-TEST DONE")]
    reasons = []
    if result["crashed"]:
        reasons.append("the firmware reported a CPU exception (see serial.log)")
    if result["timed_out"]:
        reasons.append(f"no power-off within {timeout} s (hang); QEMU was stopped")
    if failures:
        reasons.append(f"{failures} check(s) failed")
    if len(done) != 1 or done[0] is None:
        reasons.append("the report has no (single, well-formed) DONE line")
    else:
        reported_passes, reported_failures = int(done[0].group(1)), int(done[0].group(2))
        if reported_failures:
            reasons.append(f"DONE reports {reported_failures} failure(s)")
        if (reported_passes, reported_failures) != (passes, failures):
            reasons.append(f"DONE counts {reported_passes}/{reported_failures} but the log shows "
                           f"{passes}/{failures} PASS/FAIL lines (lost output)")
        if passes == 0:
            reasons.append("no check passed")
    if not result["timed_out"] and not result["crashed"] and result["exit_code"] != 0:
        reasons.append(f"QEMU exited with status {result['exit_code']}: {result['qemu_output']}")
    return reasons


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build_dir", nargs="?", default=os.path.join(REPO, "build", "efi"),
                        help="firmware build tree with the images (default: build/efi)")
    parser.add_argument("--timeout", type=float, default=120.0, help="seconds before QEMU is stopped (default 120)")
    parser.add_argument("--driver", help="the UI driver image to test instead of the build tree's, e.g. the EDK II-built "
                        "build/edk2/Build/KestUiPkg/RELEASE_GCC5/X64/UserInterface.efi")
    parser.add_argument("--out", help="folder for logs and screenshots (default out/ovmf)")
    arguments = parser.parse_args()

    global OUT
    if arguments.out:
        OUT = os.path.abspath(arguments.out)
    images = find_inputs(os.path.abspath(arguments.build_dir), arguments.driver)
    print(f"ovmf-test: driver {images['driver']}")
    if kvm_usable():
        result = run("kvm", images, arguments.timeout)
        if result["kvm_failed"]:
            print("ovmf-test: KVM cannot run the firmware on this host; using TCG")
            result = run("tcg", images, arguments.timeout)
    else:
        result = run("tcg", images, arguments.timeout)

    for line in result["lines"]:
        print(line)
    done_at = "-" if result["done_at"] is None else f"{result['done_at']:.1f} s"
    print(f"ovmf-test: accelerator {result['accelerator']}, boot to DONE {done_at}, "
          f"QEMU ran {result['ran_for']:.1f} s")
    print(f"ovmf-test: logs in {OUT}/"
          + (f" (screenshot {os.path.basename(result['screenshot'])})" if result["screenshot"] else ""))
    if result["pages"]:
        print("ovmf-test: pages held on screen: " + ", ".join(os.path.basename(page) for page in result["pages"]))

    reasons = verdict(result, arguments.timeout)
    if reasons:
        for reason in reasons:
            print(f"ovmf-test: FAILED: {reason}")
        if not result["lines"]:
            tail = result["serial_text"].strip().splitlines()[-15:]
            print("ovmf-test: last serial output:\n  " + "\n  ".join(tail) if tail else "ovmf-test: no serial output")
        return 1
    print("ovmf-test: PASSED")
    return 0


if __name__ == "__main__":
    sys.exit(main())
