#!/usr/bin/env python3
"""Flights for scripts/real_feeds: an own ship as NMEA 0183 sentences, other aircraft as Mode S extended squitters.

    real_feeds.py nmea SECONDS            the sentences of a flight, to standard output
    real_feeds.py squitters HOST PORT     frames of others about it, twice a second, until the receiver closes

Everything is relative to one place of the moving map's invented region.
"""

import datetime
import math
import socket
import sys
import time

START = (46.42, -31.35)  # degrees
OWN_TRACK = 300.0
OWN_KNOTS = 150.0
OWN_METRES = 3600.0

METRES_PER_MILE = 1852.0
METRES_PER_DEGREE = 60.0 * METRES_PER_MILE

# Address, callsign, miles from the start, bearing from there, feet, knots, track, feet a minute.
OTHERS = (
    (0x4CA2D6, "TVK201", 4.0, 320.0, 12300, 210, 120.0, 0),
    (0x4CA2D7, "TVK202", 9.0, 20.0, 10100, 180, 235.0, 1200),
    (0x4CA2D8, "TVK203", 7.0, 230.0, 17500, 290, 340.0, -900),
    (0x4CA2D9, "TVK204", 14.0, 290.0, 11800, 250, 60.0, 0),
    (0x4CA2DA, "TVK205", 3.0, 180.0, 8200, 120, 300.0, 0),
)


def moved(place, track, metres):
    """The place at that distance along a track."""
    angle = math.radians(track)
    latitude = place[0] + metres * math.cos(angle) / METRES_PER_DEGREE
    scale = METRES_PER_DEGREE * math.cos(math.radians(place[0]))
    return latitude, place[1] + metres * math.sin(angle) / scale


def angle_field(degrees, width, letters):
    """Degrees and minutes without a gap, and the half of the globe."""
    whole, part = divmod(round(abs(degrees) * 600000.0), 600000)
    return f"{whole:0{width}d}{part / 10000.0:07.4f},{letters[degrees < 0.0]}"


def sentence(text):
    total = 0
    for character in text:
        total ^= ord(character)
    return f"${text}*{total:02X}\r\n"


def nmea(seconds):
    begin = datetime.datetime.now(datetime.timezone.utc)
    for second in range(seconds):
        now = begin + datetime.timedelta(seconds=second)
        clock = now.strftime("%H%M%S.00")
        latitude, longitude = moved(START, OWN_TRACK, OWN_KNOTS * METRES_PER_MILE / 3600.0 * second)
        place = angle_field(latitude, 2, "NS") + "," + angle_field(longitude, 3, "EW")
        date = now.strftime("%d%m%y")
        yield sentence(f"GPRMC,{clock},A,{place},{OWN_KNOTS:.1f},{OWN_TRACK:.1f},{date},,,A")
        yield sentence(f"GPGGA,{clock},{place},1,09,0.9,{OWN_METRES:.1f},M,46.0,M,,")


def with_parity(data):
    """A frame of 112 bits: 88 of data, and the remainder of their division by the generator polynomial."""
    generator = 0x1FFF409
    remainder = data << 24
    for bit in range(111, 23, -1):
        if remainder >> bit & 1:
            remainder ^= generator << (bit - 24)
    return data << 24 | remainder


def squitter(address, message):
    """Format 17 with the 56 bits of a message, as receivers write it in text."""
    return f"*{with_parity(17 << 83 | 5 << 80 | address << 56 | message):028X};\n"


def identification(callsign):
    message = 4 << 51
    for position, character in enumerate(callsign.ljust(8)):
        message |= (ord(character) & 0x3F) << (42 - 6 * position)
    return message


def zone_count(latitude):
    """Longitude zones at a latitude between 0 and 87 degrees."""
    step = 1.0 - math.cos(math.pi / 30.0)
    return math.floor(2.0 * math.pi / math.acos(1.0 - step / math.cos(math.radians(latitude)) ** 2))


def compact(latitude, longitude, odd):
    """Both coordinates as parts of their zones, 17 bits each."""
    height = 360.0 / (60 - odd)
    row = math.floor(131072.0 * (latitude % height) / height + 0.5)
    rounded = height * (row / 131072.0 + math.floor(latitude / height))
    width = 360.0 / max(zone_count(abs(rounded)) - odd, 1)
    column = math.floor(131072.0 * (longitude % width) / width + 0.5)
    return row % 131072, column % 131072


def airborne_position(place, feet, odd):
    row, column = compact(place[0], place[1], odd)
    steps = (feet + 1000) // 25
    altitude = steps >> 4 << 5 | 1 << 4 | steps & 15
    return 11 << 51 | altitude << 36 | odd << 34 | row << 17 | column


def airborne_velocity(knots, track, feet_per_minute):
    east = round(knots * math.sin(math.radians(track)))
    north = round(knots * math.cos(math.radians(track)))
    climb = round(abs(feet_per_minute) / 64)
    message = 19 << 51 | 1 << 48
    message |= (east < 0) << 42 | (abs(east) + 1) << 32
    message |= (north < 0) << 31 | (abs(north) + 1) << 21
    return message | (feet_per_minute < 0) << 19 | (climb + 1) << 10


def squitters(seconds, odd):
    for address, callsign, miles, bearing, feet, knots, track, climb in OTHERS:
        place = moved(START, bearing, miles * METRES_PER_MILE)
        place = moved(place, track, knots * METRES_PER_MILE / 3600.0 * seconds)
        height = round(feet + climb * seconds / 60.0)
        yield squitter(address, airborne_position(place, height, odd))
        yield squitter(address, airborne_velocity(knots, track, climb))
        yield squitter(address, identification(callsign))


def send_squitters(host, port):
    begin = time.monotonic()
    with socket.create_connection((host, port)) as receiver:
        odd = 0
        while True:
            receiver.sendall("".join(squitters(time.monotonic() - begin, odd)).encode())
            odd = 1 - odd
            time.sleep(0.5)


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "nmea":
        sys.stdout.write("".join(nmea(int(sys.argv[2]))))
    elif len(sys.argv) == 4 and sys.argv[1] == "squitters":
        try:
            send_squitters(sys.argv[2], int(sys.argv[3]))
        except (BrokenPipeError, ConnectionResetError):
            pass
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
