#!/usr/bin/env python3
"""Gives damaged DWG drawings to cfgctl, which must refuse or read them, and never break.

damaged_dwg.py CFGCTL FOLDER [--seconds N] [--seed N] [--keep FOLDER]

Drawings of FOLDER are cut off, filled with other bytes and bits, and put together from two places,
at places that a pseudo-random sequence tells: the same ones at each run. In part of the cases the
checksums are made right again, so that the damage gets past them. Each command on such a drawing
must end with the exit status 0, 1 or 2, in time, within a bound of memory, and tell what is wrong
where it failed. Cases run until N seconds are over (30 unless told). --keep stores the drawings
that broke something; a line tells how to see it again. The exit status is 1 when something broke,
77 when FOLDER is empty text.
"""

from __future__ import annotations

import argparse
import contextlib
import os
import random
import resource
import struct
import subprocess
import sys
import tempfile
import time
import zlib
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

from dwg_file import (FLAT, HEADER_AT, HEADER_SIZE, PAGE_MASK, RECORD_SEED, SEEDS_OF_FLAT, DwgError,
                      DwgFile, crc16)

COMMANDS = (["drawing", "--json"], ["levels", "tool.ini", "[A]B"], ["attupdate"],
            ["attributes", "{handle}"], ["attdefs", "{block}"], ["view"],
            ["set", "tool.ini", "[A]B", "1", "--save-as", "saved.dwg"],
            ["erase", "{handle}", "--save-as", "saved.dwg"],
            ["copy", "{handle}", "--save-as", "saved.dwg"])
TIME_LIMIT = 20
# Resident memory, since that of addresses means nothing where a sanitizer reserves terabytes.
MEMORY_FLOOR = 300 << 20
MEMORY_PER_BYTE = 60
SANITIZER_TIMES = 4
STATUSES = (0, 1, 2)
PAGE_HEAD = 32


@dataclass
class Sample:
    """A whole drawing, and where its parts are."""

    file: Path
    data: bytes
    drawing: DwgFile | None  # none where the reader of the tests does not read the version

    def handle(self, chance: random.Random) -> str:
        if self.drawing is None:
            return f"{chance.randrange(1, 0x200):X}"
        return f"{chance.choice(list(self.drawing.objects)):X}"

    def block(self, chance: random.Random) -> str:
        names = self.drawing.names("BLOCK_RECORD") if self.drawing else ["*Model_Space"]
        return chance.choice(names)


def sample_of(file: Path) -> Sample:
    try:
        return Sample(file, file.read_bytes(), DwgFile(file))
    except DwgError:
        return Sample(file, file.read_bytes(), None)


# --- damage --------------------------------------------------------------------------------------


def cut(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    del data[chance.randrange(len(data)):]


def flip(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    for _ in range(chance.choice((1, 3, 30, 300))):
        data[chance.randrange(len(data))] ^= 1 << chance.randrange(8)


def fill(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    at, size = chance.randrange(len(data)), chance.choice((1, 4, 64, 4096))
    byte = chance.choice((0, 0xFF, 0x7F, 0x80, chance.randrange(256)))
    data[at:at + size] = bytes([byte]) * len(data[at:at + size])


def transplant(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    size = chance.choice((2, 16, 512))
    there, here = (chance.randrange(len(data)) for _ in range(2))
    piece = data[there:there + size]
    data[here:here + len(piece)] = piece


def hurt_head(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    """Behind the version, where places and sizes stand."""
    for _ in range(chance.choice((1, 2, 5))):
        data[chance.randrange(6, 0x80)] = chance.choice((0, 1, 0x7F, 0xFF, chance.randrange(256)))
    if data[:6].decode("ascii", "replace") == FLAT:
        count = min(struct.unpack_from("<I", data, 0x15)[0], 6)
        end = 0x19 + 9 * count
        seed = SEEDS_OF_FLAT.get(count, 0)
        struct.pack_into("<H", data, end, crc16(bytes(data[:end]), 0) ^ seed)


def hurt_page_header(data: bytearray, _sample: Sample, chance: random.Random) -> None:
    """The header of an archive of pages, whose checksum is right again."""
    if data[:6].decode("ascii", "replace") in (FLAT, "AC1012", "AC1014", "AC1021"):
        return hurt_head(data, _sample, chance)
    header, noise, mask = bytearray(data[HEADER_AT:HEADER_AT + HEADER_SIZE]), 1, bytearray()
    for _ in range(HEADER_SIZE):
        noise = (noise * 0x343FD + 0x269EC3) & 0xFFFFFFFF
        mask.append(noise >> 16 & 0xFF)
    header = bytearray(byte ^ other for byte, other in zip(header, mask, strict=True))
    field = chance.randrange(3, 26)
    struct.pack_into("<I", header, 4 * field, number(chance))
    struct.pack_into("<I", header, 0x68, zlib.crc32(header[:0x68] + bytes(4)))
    data[HEADER_AT:HEADER_AT + HEADER_SIZE] = \
        bytes(byte ^ other for byte, other in zip(header, mask, strict=True))
    return None


def number(chance: random.Random) -> int:
    return chance.choice((0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, chance.randrange(1 << 8),
                          chance.randrange(1 << 16), chance.randrange(1 << 32)))


def hurt_record(data: bytearray, sample: Sample, chance: random.Random) -> None:
    """Fields of some records; their checksums are right again."""
    if sample.drawing is None or sample.drawing.version != FLAT:
        return hurt_page(data, sample, chance)
    for _ in range(chance.choice((1, 5, 50))):
        handle = chance.choice(list(sample.drawing.objects))
        at, size = sample.drawing.places[handle], len(sample.drawing.objects[handle].raw)
        record = data[at:at + size - 2]
        # Most hits go behind length and type.
        first = 0 if chance.random() < 0.1 else 2
        record[chance.randrange(first, len(record))] ^= 1 << chance.randrange(8)
        data[at:at + size] = record + struct.pack("<H", crc16(bytes(record), RECORD_SEED))
    return None


def hurt_map(data: bytearray, sample: Sample, chance: random.Random) -> None:
    """The object map of R2000, whose checksums are right again."""
    if sample.drawing is None or sample.drawing.version != FLAT:
        return hurt_page(data, sample, chance)
    at = sample.drawing.locators[2][1]
    while (size := struct.unpack_from(">H", data, at)[0]) > 2:
        for _ in range(chance.choice((0, 1, 10))):
            data[chance.randrange(at + 2, at + size)] = chance.randrange(256)
        struct.pack_into(">H", data, at + size, crc16(bytes(data[at:at + size]), RECORD_SEED))
        at += size + 2
    return None


def hurt_page(data: bytearray, sample: Sample, chance: random.Random) -> None:
    """The packed data of a page, or what its head tells; its checksums are right again."""
    pages = [at for at in range(0x100, len(data) - PAGE_HEAD, 0x20)
             if struct.unpack_from("<I", data, at)[0] ^ PAGE_MASK ^ at == 0x4163043B]
    if not pages:
        return system_page(data, chance) if sample.drawing else flip(data, sample, chance)
    if chance.random() < 0.2:
        return system_page(data, chance)
    at = chance.choice(pages)
    mask = PAGE_MASK ^ at
    words = [word ^ mask for word in struct.unpack_from("<8I", data, at)]
    if chance.random() < 0.2:
        words[chance.randrange(1, 6)] = number(chance)
    size = min(words[2], len(data) - at - PAGE_HEAD)
    for _ in range(chance.choice((0, 1, 4, 40))):
        if size:
            data[at + PAGE_HEAD + chance.randrange(size)] = chance.randrange(256)
    words[7] = zlib.adler32(data[at + PAGE_HEAD:at + PAGE_HEAD + size], 0)
    words[6] = 0
    words[6] = zlib.adler32(struct.pack("<8I", *words), words[7])
    struct.pack_into("<8I", data, at, *(word ^ mask for word in words))
    return None


def system_page(data: bytearray, chance: random.Random) -> None:
    """The page map or the section map; the checksum is right again."""
    pages = [at for at in range(0x100, len(data) - 20, 0x20)
             if struct.unpack_from("<I", data, at)[0] in (0x41630E3B, 0x4163003B)]
    if not pages:
        return
    at = chance.choice(pages)
    if chance.random() < 0.3:
        struct.pack_into("<I", data, at + chance.choice((4, 8)), number(chance))
    size = min(struct.unpack_from("<I", data, at + 8)[0], len(data) - at - 20)
    for _ in range(chance.choice((1, 3, 20))):
        if size:
            data[at + 20 + chance.randrange(size)] = chance.randrange(256)
    seed = zlib.adler32(data[at:at + 16] + bytes(4), 0)
    struct.pack_into("<I", data, at + 16, zlib.adler32(data[at + 20:at + 20 + size], seed))


DAMAGES = (cut, flip, fill, transplant, hurt_head, hurt_page_header, hurt_record, hurt_record,
           hurt_record, hurt_map, hurt_page, hurt_page)


# --- running -------------------------------------------------------------------------------------


def is_sanitized(cfgctl: Path) -> bool:
    return b"__asan_init" in cfgctl.read_bytes()


def fault_of(cfgctl: Path, folder: Path, words: list[str], limit: int) -> tuple[str, int]:
    """What is wrong with a run, empty for nothing; and its exit status."""
    with subprocess.Popen([cfgctl, *words, "--module-dir", folder], cwd=folder,
                          stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=(folder / "told").open("wb")) as process:
        ends = time.monotonic() + TIME_LIMIT
        while True:
            ended, status, used = os.wait4(process.pid, os.WNOHANG)
            if ended:
                break
            if time.monotonic() > ends:
                process.kill()
                os.wait4(process.pid, 0)
                process.returncode = -9
                return f"it ran for more than {TIME_LIMIT} s", -9
            time.sleep(0.002)
        code = process.returncode = os.waitstatus_to_exitcode(status)
    told = (folder / "told").read_bytes()
    if code not in STATUSES or b"runtime error:" in told or b"Sanitizer" in told:
        return f"it ended with {code}: {told[-2000:].decode('utf-8', 'replace')}", code
    if used.ru_maxrss << 10 > limit:
        return f"it took {used.ru_maxrss >> 10} MB", code
    if code != 0 and not told.strip():
        return f"it ended with {code} and told nothing", code
    return "", code


def damaged(sample: Sample, chance: random.Random) -> tuple[bytes, str]:
    data = bytearray(sample.data)
    names = []
    for _ in range(chance.choice((1, 1, 1, 2))):
        damage = chance.choice(DAMAGES)
        with contextlib.suppress(IndexError, ValueError, struct.error):
            # The second damage may not find what the first has taken away.
            names.append(damage.__name__)
            damage(data, sample, chance)
    return bytes(data), "+".join(names)


def main() -> int:
    parser = argparse.ArgumentParser()
    parser.add_argument("cfgctl", type=Path)
    parser.add_argument("folder")
    parser.add_argument("--seconds", type=float, default=30)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", type=Path)
    arguments = parser.parse_args()
    if not arguments.folder:
        print("damaged_dwg: no folder of drawings; configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER",
              file=sys.stderr)
        return 77
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    cfgctl = arguments.cfgctl.resolve()
    times = SANITIZER_TIMES if is_sanitized(cfgctl) else 1
    chance = random.Random(arguments.seed)
    samples = [sample_of(file) for file in sorted(Path(arguments.folder).glob("*.dwg"))]
    ends = time.monotonic() + arguments.seconds
    statuses: Counter[int] = Counter()
    broken = 0
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / "tool.ini").write_text("[A]\nB=1\n", encoding="ascii")
        while samples and time.monotonic() < ends:
            sample = chance.choice(samples)
            data, how = damaged(sample, chance)
            (folder / "damaged.dwg").write_bytes(data)
            words = [word.format(handle=sample.handle(chance), block=sample.block(chance))
                     for word in chance.choice(COMMANDS)] + ["--drawing", "damaged.dwg"]
            limit = (MEMORY_FLOOR + MEMORY_PER_BYTE * len(data)) * times
            fault, status = fault_of(cfgctl, folder, words, limit)
            statuses[status] += 1
            if fault:
                broken += 1
                kept = f"{arguments.seed}-{sum(statuses.values())}-{sample.file.name}"
                print(f"WRONG {sample.file.name} ({how}) {' '.join(words)}: {fault}; {kept}",
                      file=sys.stderr, flush=True)
                if arguments.keep:
                    (arguments.keep / kept).write_bytes(data)
    ended = ", ".join(f"{count} with {status}" for status, count in sorted(statuses.items()))
    print(f"{sum(statuses.values())} damaged drawings: {ended}; {broken} broke something")
    return 1 if broken or not statuses[0] or not statuses[2] + statuses[1] else 0


if __name__ == "__main__":
    sys.exit(main())
