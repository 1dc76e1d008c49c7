"""A PNG writer for the previews."""

from struct import pack
from zlib import compress, crc32


def _chunk(kind, data):
    return pack('>I', len(data)) + kind + data + pack('>I', crc32(kind + data))


def write(path, rows):
    """Rows of (r, g, b)."""
    lines = [b'\0' + b''.join(map(bytes, row)) for row in rows]
    head = pack('>IIBBBBB', len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    with open(path, 'wb') as out:
        out.write(b'\x89PNG\r\n\x1a\n' + _chunk(b'IHDR', head)
                  + _chunk(b'IDAT', compress(b''.join(lines), 6)) + _chunk(b'IEND', b''))
