#!/usr/bin/env python3
"""Makes samples/satellites.log: a receiver of today, simulated.

Ninety minutes off Simrishamn, an epoch a minute: GPS (L1 C/A, L5), GLONASS (G1, G2), Galileo (E1,
E5a), BeiDou (B1I, B2a), QZSS below the horizon, SBAS; GSV per signal and GSA with system ids as NMEA
0183 version 4.11 has them. Orbits are circles, C/N0 follows the elevation. Nothing is random but by
the seed, so that the file is the same on every machine.
"""
import math
import random
import sys

EARTH_TURN = 7.2921159e-5  # rad/s
GM = 3.986004418e14
EARTH = 6371000.0
LATITUDE, LONGITUDE = math.radians(55.55), math.radians(14.40)

# Name, talker, system id, radius of the orbit (m), inclination, planes, satellites per plane, first
# number, and the signals: id and how much weaker than the first (dB).
SYSTEMS = [
    ("GPS", "GP", 1, 26560e3, 55.0, 6, 5, 1, [("1", 0), ("8", 2)]),
    ("GLONASS", "GL", 2, 25510e3, 64.8, 3, 8, 65, [("1", 1), ("3", 4)]),
    ("Galileo", "GA", 3, 29600e3, 56.0, 3, 8, 1, [("7", 0), ("1", 1)]),
    ("BeiDou", "GB", 4, 27906e3, 55.0, 3, 8, 19, [("1", 1), ("5", 2)]),
]
SBAS = [(36, 19, 151), (49, 23, 180)]  # number, elevation, azimuth: they stand still


def checksum(body):
    total = 0
    for c in body:
        total ^= ord(c)
    return f"${body}*{total:02X}\r\n"


def place(radius, inclination, node, phase, seconds):
    """Elevation and azimuth, in degrees, of a satellite on a circular orbit."""
    motion = math.sqrt(GM / radius**3)
    u = phase + motion * seconds
    x, y = math.cos(u), math.sin(u)
    node -= EARTH_TURN * seconds
    east_fixed = (
        x * math.cos(node) - y * math.cos(inclination) * math.sin(node),
        x * math.sin(node) + y * math.cos(inclination) * math.cos(node),
        y * math.sin(inclination),
    )
    satellite = [radius * part for part in east_fixed]
    observer = (
        EARTH * math.cos(LATITUDE) * math.cos(LONGITUDE),
        EARTH * math.cos(LATITUDE) * math.sin(LONGITUDE),
        EARTH * math.sin(LATITUDE),
    )
    d = [s - o for s, o in zip(satellite, observer)]
    east = -math.sin(LONGITUDE) * d[0] + math.cos(LONGITUDE) * d[1]
    north = (
        -math.sin(LATITUDE) * math.cos(LONGITUDE) * d[0]
        - math.sin(LATITUDE) * math.sin(LONGITUDE) * d[1]
        + math.cos(LATITUDE) * d[2]
    )
    up = sum(part * o for part, o in zip(d, observer)) / EARTH
    elevation = math.degrees(math.asin(up / math.sqrt(sum(part * part for part in d))))
    return elevation, math.degrees(math.atan2(east, north)) % 360.0


def groups(talker, signal, rows):
    """The GSV of one signal. Rows are number, elevation, azimuth, C/N0 or None."""
    total = max(1, (len(rows) + 3) // 4)
    for number in range(1, total + 1):
        body = f"{talker}GSV,{total},{number},{len(rows):02d}"
        for satellite, elevation, azimuth, cn0 in rows[4 * (number - 1) : 4 * number]:
            level = "" if cn0 is None else f"{cn0:02d}"
            body += f",{satellite:02d},{elevation:02d},{azimuth:03d},{level}"
        yield checksum(f"{body},{signal}")


def main(path):
    random.seed(1)
    fade = {}
    with open(path, "w", newline="") as out:
        for minute in range(90):
            clock = f"{10 + minute // 60:02d}{minute % 60:02d}00.00"
            out.write(checksum(f"GNRMC,{clock},A,5533.0000,N,01424.0000,E,0.0,,150626,,,A,V"))
            out.write(
                checksum(f"GNGGA,{clock},5533.0000,N,01424.0000,E,1,24,0.6,5.0,M,35.0,M,,")
            )
            sent = []
            for name, talker, system, radius, inclination, planes, each, first, signals in SYSTEMS:
                rows = []
                for plane in range(planes):
                    for slot in range(each):
                        node = 2 * math.pi * plane / planes + 0.4 * system
                        phase = 2 * math.pi * (slot + 0.37 * plane) / each
                        elevation, azimuth = place(
                            radius, math.radians(inclination), node, phase, 60.0 * minute
                        )
                        if elevation > 3.0:
                            number = first + plane * each + slot
                            rows.append((number, round(elevation), round(azimuth) % 360))
                if talker == "GP":
                    rows += SBAS
                sent.append((talker, system, sorted(rows), signals))
            levels = {}
            for talker, system, rows, signals in sent:
                for number, elevation, azimuth in rows:
                    drift = fade.get((talker, number), 0.0) * 0.9 + random.gauss(0.0, 0.7)
                    fade[(talker, number)] = drift
                    strongest = 32.0 + 18.0 * math.sin(math.radians(elevation)) + drift
                    for signal, weaker in signals:
                        tracked = elevation > 5 and (number % 7 != 3 or signal == signals[0][0])
                        level = round(strongest - weaker) if tracked else None
                        levels[(talker, number, signal)] = level
            for talker, system, rows, signals in sent:
                used = [
                    number
                    for number, elevation, _ in rows
                    if elevation >= 10 and (levels[(talker, number, signals[0][0])] or 0) >= 35
                ]
                for at in range(0, max(len(used), 1), 12):
                    fields = [f"{number:02d}" for number in used[at : at + 12]]
                    fields += [""] * (12 - len(fields))
                    out.write(
                        checksum(f"GNGSA,A,3,{','.join(fields)},1.1,0.6,0.9,{system}")
                    )
            for talker, system, rows, signals in sent:
                for signal, _ in signals:
                    listed = [
                        row + (levels[(talker, row[0], signal)],)
                        for row in rows
                        if signal == signals[0][0] or levels[(talker, row[0], signal)] is not None
                    ]
                    if signal == "8":
                        listed = [row for row in listed if row[0] < 33]
                    out.writelines(groups(talker, signal, listed))
            out.writelines(groups("GQ", "1", [(2, 4, 40 + minute // 10, None)]))


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else "samples/satellites.log")
