# SPDX-License-Identifier: Apache-2.0
"""dhcp_server.py INTERFACE: a DHCP server (RFC 2131) that grants everybody who asks there the one address it has."""
import socket
import struct
import sys

SERVER, CLIENT = 67, 68  # ports
DISCOVER, OFFER, REQUEST, ACKNOWLEDGE = 1, 2, 3, 5
COOKIE = bytes.fromhex("63825363")
FIXED = struct.Struct("!BBBBIHH4s4s4s4s16s64s128s")  # what stands before the options
OURS = "198.51.100.1"
GRANTED = "198.51.100.77"
SECONDS = 7200
OPTIONS = {1: socket.inet_aton("255.255.255.0"), 3: socket.inet_aton(OURS),
           6: socket.inet_aton("198.51.100.53") + socket.inet_aton("198.51.100.54"), 15: b"granted.example",
           28: socket.inet_aton("198.51.100.255"), 51: struct.pack("!I", SECONDS), 54: socket.inet_aton(OURS)}


def kind_of(message):
    """The content of option 53; None for what is no question of a client."""
    options = message[FIXED.size + len(COOKIE):]
    while options and options[0] != 255:
        if options[0] == 0:
            options = options[1:]
            continue
        code, length = options[:2]
        if code == 53:
            return options[2]
        options = options[2 + length:]
    return None


def answer(message, kind):
    _, _, _, _, number, _, flags, *_, hardware_address, _, _ = FIXED.unpack_from(message)
    nobody = bytes(4)
    fixed = FIXED.pack(2, 1, 6, 0, number, 0, flags, nobody, socket.inet_aton(GRANTED), socket.inet_aton(OURS), nobody,
                       hardware_address, b"", b"")
    options = b"".join(bytes([code, len(content)]) + content for code, content in {53: bytes([kind]), **OPTIONS}.items())
    return fixed + COOKIE + options + b"\xff"


def serve(interface):
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as server:
        server.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
        server.setsockopt(socket.SOL_SOCKET, socket.SO_BINDTODEVICE, interface.encode())
        server.bind(("", SERVER))
        while True:
            message = server.recv(4096)
            reply = {DISCOVER: OFFER, REQUEST: ACKNOWLEDGE}.get(kind_of(message))
            if reply is not None:
                server.sendto(answer(message, reply), ("255.255.255.255", CLIENT))


if __name__ == "__main__":
    serve(sys.argv[1])
