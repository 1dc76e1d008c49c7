"""What the tests of the package share.

    FILE --program VELDRIN --build FOLDER --cmake CMAKE --cpack CPACK [unittest arguments]
"""

import argparse
import os
import re
import subprocess
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.join(HERE, '..', '..')
sys.path[1:1] = [os.path.join(HERE, '..', 'desktop'), os.path.join(HERE, '..', 'host')]
from world import World, shared_folder  # noqa: E402

given = None  # set by main
# Installing and packing are work for the disk, on a machine that has other work.
LONG_PATIENCE = 120


def run(*command, ok=(0,), **options):
    """Both outputs of a command as one text."""
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=LONG_PATIENCE, **options)
    text = done.stdout.decode(errors='replace')
    if done.returncode not in ok:
        raise AssertionError(f'{command} ended with {done.returncode}: {text}')
    return text


def source(name):
    return os.path.join(ROOT, 'packaging', name)


def read(path):
    with open(path, encoding='utf-8') as file:
        return file.read()


def heads_of_help():
    """What the program's own list of options has on the left side, such as '--output null'."""
    heads = []
    for line in run(given.program, '--help').splitlines():
        found = re.match(r'  ([-/]\S.*?)(?:  |$)', line)
        if found:
            heads += found[1].split(', ')
    return heads


def options_in(texts):
    return {option for text in texts for option in re.findall(r'--[a-z]+(?:-[a-z]+)*', text)}


def playable_extensions():
    """Of all files that can be played where everything is installed."""
    table = read(os.path.join(ROOT, 'host', 'engine', 'file_types.cpp'))
    return re.findall(r'FileType\{"(\w+)"', table)


LISTS = ['m3u', 'm3u8', 'pls', 'xspf', 'cue']


def main():
    global given
    parser = argparse.ArgumentParser()
    for name in 'program', 'build', 'cmake', 'cpack':
        parser.add_argument('--' + name, type=os.path.abspath)
    given, rest = parser.parse_known_args()
    World.program = os.fsencode(given.program)
    with shared_folder():
        unittest.main(argv=sys.argv[:1] + rest)
