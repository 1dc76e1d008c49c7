"""Windows bitmaps with a 40-byte header, bottom row first: writer and reader."""

from struct import pack, unpack_from


def _packed_row(indices, bits):
    """One row of palette indices, the leftmost pixel in the highest bits, padded to 4 bytes."""
    per_byte = 8 // bits
    data = bytearray()
    for start in range(0, len(indices), per_byte):
        byte = 0
        for i, index in enumerate(indices[start:start + per_byte]):
            byte |= index << (8 - bits * (i + 1))
        data.append(byte)
    return bytes(data) + bytes(-len(data) % 4)


def _runs(row):
    """The row as (index, count) with counts up to 255."""
    runs = []
    for index in row:
        if runs and runs[-1][0] == index and runs[-1][1] < 255:
            runs[-1][1] += 1
        else:
            runs.append([index, 1])
    return runs


LONG = 6  # a run of so many pixels is never worth putting among unlike ones


def _literals(runs, start):
    """Where a literal that begins with this run may end, and its length in bytes."""
    pixels = 0
    for end in range(start, len(runs)):
        pixels += runs[end][1]
        if runs[end][1] >= LONG or pixels > 255:
            return
        if pixels >= 3:
            yield end + 1, 2 + pixels + pixels % 2


def _rle_row(row):
    """The shortest codes for the row: to each run, the shortest of the ways that lead past it."""
    runs = _runs(row)
    length, came = [0] + [2 * len(row) + 2] * len(runs), [0] * (len(runs) + 1)
    for start in range(len(runs)):
        for end, cost in [(start + 1, 2), *_literals(runs, start)]:
            if length[start] + cost < length[end]:
                length[end], came[end] = length[start] + cost, start
    codes, end = [b'\0\0'], len(runs)
    while end:
        part, end = runs[came[end]:end], came[end]
        pixels = bytes(index for index, count in part for _ in range(count))
        if len(part) == 1:
            codes.append(bytes((len(pixels), pixels[0])))
        else:
            codes.append(bytes((0, len(pixels))) + pixels + bytes(len(pixels) % 2))
    return b''.join(reversed(codes))


def _file(width, height, bits, compression, palette, pixels):
    table = b''.join(bytes((b, g, r, 0)) for r, g, b in palette)
    offset = 14 + 40 + len(table)
    head = pack('<2sIHHI', b'BM', offset + len(pixels), 0, 0, offset)
    info = pack('<IiiHHIIiiII', 40, width, height, 1, bits, compression, len(pixels),
                2835, 2835, len(palette), 0)
    return head + info + table + pixels


def indexed(rows, palette, bits, compress=False, fill=True):
    """The bytes of a picture of 1, 4 or 8 bits; the palette is filled up with black if asked."""
    full = list(palette) + [(0, 0, 0)] * ((1 << bits) - len(palette) if fill else 0)
    assert len(full) <= 1 << bits, 'too many colours for the depth'
    if compress:
        pixels = b''.join(bytes(_rle_row(row)) for row in reversed(rows))
        pixels = pixels[:-2] + b'\0\1'  # the last row ends the picture
    else:
        pixels = b''.join(_packed_row(row, bits) for row in reversed(rows))
    return _file(len(rows[0]), len(rows), bits, 1 if compress else 0, full, pixels)


def true_colour(rows):
    """The bytes of a 24-bit picture."""
    pad = bytes(-3 * len(rows[0]) % 4)
    pixels = b''.join(b''.join(bytes((b, g, r)) for r, g, b in row) + pad for row in reversed(rows))
    return _file(len(rows[0]), len(rows), 24, 0, [], pixels)


class Picture:
    """A picture read back: its size, its depth, and rows of (r, g, b), top row first."""

    def __init__(self, data):
        (magic, size, _, _, offset) = unpack_from('<2sIHHI', data)
        (head, self.width, self.height, planes, self.bits, self.compression,
         length, _, _, self.colours, _) = unpack_from('<IiiHHIIiiII', data, 14)
        if (magic, size, head, planes) != (b'BM', len(data), 40, 1) or length != size - offset:
            raise ValueError('not a whole bitmap of the plain kind')
        table = data[54:offset]
        self.palette = [(table[i + 2], table[i + 1], table[i]) for i in range(0, len(table), 4)]
        read = self._read_rle if self.compression else self._read_plain
        self.rows = read(data[offset:])[::-1]

    def _read_plain(self, data):
        stride = (self.width * self.bits + 31) // 32 * 4
        if len(data) != stride * self.height:
            raise ValueError('wrong length of the pixels')
        rows = []
        for y in range(self.height):
            line = data[y * stride:(y + 1) * stride]
            if self.bits == 24:
                rows.append([(line[3 * x + 2], line[3 * x + 1], line[3 * x])
                             for x in range(self.width)])
            else:
                rows.append([self.palette[self._index(line, x)] for x in range(self.width)])
        return rows

    def _index(self, line, x):
        position = x * self.bits
        return line[position >> 3] >> (8 - self.bits - (position & 7)) & ((1 << self.bits) - 1)

    def _read_rle(self, data):
        rows, row, at = [], [], 0
        while True:
            count, value = data[at], data[at + 1]
            at += 2
            if count:
                row += [self.palette[value]] * count
            elif value >= 3:
                row += [self.palette[i] for i in data[at:at + value]]
                at += value + value % 2
            else:
                rows.append(row)
                row = []
                if value == 1:
                    break
        if at != len(data) or len(rows) != self.height or any(len(r) != self.width for r in rows):
            raise ValueError('damaged run-length rows')
        return rows
