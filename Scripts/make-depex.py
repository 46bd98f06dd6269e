#!/usr/bin/env python3
"""Writes the DXE dependency expression of a binary INF as the .depex file that its [Binaries] list.

  make-depex.py UserInterfaceBinary.inf UserInterface.depex

EDK II builds a module's [Depex] into its firmware file only when it builds the module from source;
a prebuilt image brings its expression as a DXE_DEPEX file. The INF's [Depex] section stays the one
place the expression is written: protocol GUID names joined by AND, in the PI encoding (PUSH of
each GUID, then one AND fewer than there are GUIDs, then END). A name this script does not know, or
another operator, stops it with a message.
"""
import re
import struct
import sys
import uuid

# The GUIDs that a UI driver's expression may name, as MdePkg's DEC defines them.
KNOWN = {
    "gEfiHiiDatabaseProtocolGuid": "ef9fc172-a1b2-4693-b327-6d32fc416042",
    "gEfiHiiStringProtocolGuid": "0fd96974-23aa-4cdc-b9cb-98d17750322a",
    "gEfiVariableArchProtocolGuid": "1e5668e2-8481-11d4-bcf1-0080c73c8881",
    "gEfiVariableWriteArchProtocolGuid": "6441f818-6362-4e44-b570-7dba31dd2453",
}
PUSH, AND, END = 0x02, 0x03, 0x08


def main():
    inf, out = sys.argv[1], sys.argv[2]
    with open(inf) as file:
        text = file.read()
    section = re.search(r"^\[Depex\]\s*\n(.*?)(?=^\[|\Z)", text, re.S | re.M)
    if not section:
        sys.exit(f"make-depex: {inf} has no [Depex] section")
    body = re.sub(r"#.*", "", section.group(1))
    words = body.split()
    names = words[0::2]
    if not names or any(word != "AND" for word in words[1::2]) or len(words) % 2 == 0:
        sys.exit(f"make-depex: {inf}: only GUID names joined by AND are understood")
    data = b""
    for name in names:
        if name not in KNOWN:
            sys.exit(f"make-depex: {inf}: unknown GUID name {name}")
        data += struct.pack("<B", PUSH) + uuid.UUID(KNOWN[name]).bytes_le
    data += bytes([AND] * (len(names) - 1) + [END])
    with open(out, "wb") as file:
        file.write(data)


if __name__ == "__main__":
    main()
