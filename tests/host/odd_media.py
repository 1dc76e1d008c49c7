"""Music files as nobody should make them, byte by byte: any number in any header, tags within tags,
sound that breaks off. Each function answers the bytes of a file."""

import math
import struct

PCM, FLOAT, ALAW, MULAW, EXTENSIBLE = 1, 3, 6, 7, 0xFFFE


def clipped(number, bits):
    return max(0, number) & ((1 << bits) - 1)


def noise(size):
    """The same bytes at every call."""
    return (bytes((i * 7 + (i >> 3)) & 0xFF for i in range(min(size, 4096))) * (size // 4096 + 1))[:size]


def chunk(name, data, order='<'):
    return name + struct.pack(order + 'I', len(data)) + data + b'\0' * (len(data) % 2)


def wav(channels=2, rate=8000, bits=16, kind=PCM, mask=None, align=None, data=None, seconds=0.1):
    """A mask makes it WAVE_FORMAT_EXTENSIBLE."""
    width = (bits + 7) // 8
    align = channels * width if align is None else align
    if data is None:
        data = noise(min(200000, max(1, int(rate * seconds)) * channels * width))
    format = struct.pack('<HHIIHH', EXTENSIBLE if mask is not None else kind, clipped(channels, 16),
                         clipped(rate, 32), clipped(rate * align, 32), clipped(align, 16), bits)
    if mask is not None:
        format += struct.pack('<HHIH', 22, bits, mask, kind)
        format += b'\0\0\0\0\x10\0\x80\0\0\xaa\0\x38\x9b\x71'
    return b'RIFF' + struct.pack('<I', len(data) + len(format) + 20) + b'WAVE' + chunk(
        b'fmt ', format) + chunk(b'data', data)


def extended(number):
    """80 bits of floating point, as AIFF writes its rates."""
    if number == 0:
        return b'\0' * 10
    exponent = math.floor(math.log2(number))
    return struct.pack('>HQ', 16383 + exponent, int(number / 2 ** exponent * 2 ** 63))


def aiff(channels=2, rate=8000, bits=16, kind=None, data=None, seconds=0.1):
    """A kind of four bytes makes it AIFF-C."""
    width = (bits + 7) // 8
    frames = max(1, int(rate * seconds))
    if data is None:
        data = noise(min(200000, frames * channels * width))
    common = struct.pack('>hIh', clipped(channels, 15) - (channels & 0x8000), frames, bits)
    common += extended(rate)
    if kind is not None:
        common += kind + b'\0\0'
    content = (b'AIFC' + chunk(b'FVER', b'\xa2\x80\x51\x40', '>') if kind else b'AIFF')
    content += chunk(b'COMM', common, '>') + chunk(b'SSND', b'\0' * 8 + data, '>')
    return b'FORM' + struct.pack('>I', len(content)) + content


def au(channels=2, rate=8000, encoding=3, data=None):
    data = noise(min(200000, max(1, rate // 10) * channels * 2)) if data is None else data
    return struct.pack('>4sIIIII', b'.snd', 24, len(data), encoding, clipped(rate, 32),
                       clipped(channels, 32)) + data


def sevens(number):
    """Seven bits of each byte."""
    return bytes((number >> shift) & 0x7F for shift in (21, 14, 7, 0))


def frame(name, data):
    """Of ID3v2.4."""
    return name + sevens(len(data)) + b'\0\0' + data


def id3(frames, flags=0):
    return b'ID3\4\0' + bytes([flags]) + sevens(len(frames)) + frames


def text_frame(name, text):
    return frame(name, b'\3' + text.encode())


def nested_chapters(depth):
    """Frames of chapters, each within the one before; 28 bytes each."""
    size = 0
    heads = []
    for _ in range(depth):
        size += 28
        heads.append(b'CHAP' + sevens(size - 10) + b'\0\0' + b'a\0' + b'\0' * 16)
    return b''.join(reversed(heads))


def atom(name, data):
    return struct.pack('>I', len(data) + 8) + name + data


def nested_atoms(name, depth):
    return b''.join(struct.pack('>I', 8 * left) + name for left in range(depth, 0, -1))


def mp4(*atoms):
    return atom(b'ftyp', b'M4A \0\0\0\0') + b''.join(atoms)


def nested_chapter_atoms(depth):
    """The chapters of a Matroska file, each within the one before."""
    sized = lambda name, size: name + b'\1' + size.to_bytes(7, 'big')
    inside = b''.join(sized(b'\xb6', 9 * left) for left in range(depth - 1, -1, -1))
    return (b'\x1a\x45\xdf\xa3\x8b\x42\x82\x88matroska' + b'\x18\x53\x80\x67\1' + b'\xff' * 7
            + sized(b'\x10\x43\xa7\x70', len(inside) + 10) + sized(b'\x45\xb9', len(inside))
            + inside)


def comments(fields):
    """What Ogg and FLAC have for tags."""
    return struct.pack('<II', 0, len(fields)) + b''.join(
        struct.pack('<I', len(field)) + field for field in fields)


def flac(*blocks):
    """Of (kind, bytes), behind the one that tells the format."""
    info = struct.pack('>HHII', 4096, 4096, 0, 0x0AC442F0) + b'\0' * 20
    blocks = [(0, info[:34].ljust(34, b'\0')), *blocks]
    return b'fLaC' + b''.join(
        bytes([kind | (0x80 if number == len(blocks) - 1 else 0)]) + struct.pack('>I', len(data))[1:]
        + data for number, (kind, data) in enumerate(blocks))


def ape_tag(items):
    """Of (name, value) in bytes."""
    body = b''.join(struct.pack('<II', len(value), 0) + name + b'\0' + value
                    for name, value in items)
    return body + struct.pack('<8sIIII8s', b'APETAGEX', 2000, len(body) + 32, len(items), 0, b'')


def adts_frames(count, size=8):
    """Empty frames of AAC, the smallest that are taken for some."""
    return struct.pack('>HBBBBB', 0xFFF1, 0x6C, 0x40 | size >> 11, size >> 3 & 0xFF,
                       (size << 5 & 0xFF) | 0x1F, 0xFC).ljust(size, b'\0') * count
