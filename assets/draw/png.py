"""A PNG writer for the previews."""

from struct import pack
from zlib import compress, crc32


def _chunk(kind, data):
    return pack('>I', len(data)) + kind + data + pack('>I', crc32(kind + data))


def write(path, rows, scale=1):
    """Rows of (r, g, b), each pixel a square of `scale`."""
    lines = []
    for row in rows:
        line = b'\0' + b''.join(bytes(p) * scale for p in row)
        lines += [line] * scale
    head = pack('>IIBBBBB', len(rows[0]) * scale, len(rows) * scale, 8, 2, 0, 0, 0)
    with open(path, 'wb') as out:
        out.write(b'\x89PNG\r\n\x1a\n' + _chunk(b'IHDR', head)
                  + _chunk(b'IDAT', compress(b''.join(lines), 6)) + _chunk(b'IEND', b''))
