#!/usr/bin/env python3
"""Makes the pictures of rows in twelve scripts anew, from the real program on a display of its own:

    tools/script_pictures.py VELDRIN [FOLDER]

writes docs/scripts-1.png, -1.5.png and -2.png, or into FOLDER. Run by hand when text looks different.
Needs the fonts that the tests need.
"""

import os
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(ROOT, 'tests', 'desktop'))
from desktop import Display, wait_for  # noqa: E402

LIST = (6, 27, 281, 181)  # of the window, in its own pixels
COLOURS = 255
TITLES = (
    'Nguyễn Du - ẤN TƯỢNG, Ǜ Ṻ, phở',
    'Чайковский - Щелкунчик',
    'Μίκης Θεοδωράκης - Ζορμπάς',
    'נָעֳמִי שֶׁמֶר - שירים לילדים',
    'فيروز - نسّم علينا الهوى',
    'نصرت فتح علی خان - میرے رشکِ قمر ہے',
    'लता मंगेशकर - क्षत्रिय, ह्रीं',
    'เพลงที่ปู่ชอบ - น้ำ ญี่ปุ่น',
    'བོད་ཡིག་སྒྲུབ་བརྒྱད',
    '久石譲 - となりの音楽',
    '동요 모음 - 아리랑',
    'Party 🎉 👨‍👩‍👧 🇩🇪 1️⃣ 👍🏽 ❤️ 🎵',
)


def prepare(folder):
    with open(os.path.join(folder, 'Sarnel.Ambrisor.ini'), 'w') as file:
        file.write('[Memory]\r\nX=10\r\nY=10\r\n')
    lines = ['OMK v1.1', str(len(TITLES)), '0']
    for number, title in enumerate(TITLES):
        lines += [title, f'/nowhere/{number}.mp3']
    with open(os.path.join(folder, 'Sarnel.Ambrisor.omk'), 'w', newline='') as file:
        file.write('\r\n'.join(lines) + '\r\n')


def shoot(display, program, folder, scale, path):
    environment = {**display.environment, 'XDG_RUNTIME_DIR': folder,
                   'XDG_CACHE_HOME': os.path.join(folder, 'cache'),
                   'XDG_STATE_HOME': os.path.join(folder, 'state')}
    player = subprocess.Popen([program, '--output', 'null', '--scale', str(scale), '--dir', folder],
                              env=environment)
    try:
        window = wait_for(lambda: display.windows_of(player), 'the window')[0]
        display.point_at(900, 750)
        left, top, _, _ = display.geometry(window)
        place = [round(side * scale) for side in LIST]
        part = (left + place[0], top + place[1], place[2], place[3])
        former = []

        def settled():
            former.append(display.part(*part).data)
            return len(former) > 1 and former[-1] == former[-2] and len(set(former[-1])) > 8
        wait_for(settled, 'the rows')
        subprocess.run(['convert', '-size', f'{part[2]}x{part[3]}', '-depth', '8', 'rgb:-',
                        '+dither', '-colors', str(COLOURS), '-strip',
                        '-define', 'png:compression-level=9', 'png8:' + path],
                       input=former[-1], check=True)
        print(f'{path}: {os.path.getsize(path)} bytes')
    finally:
        player.terminate()
        player.wait()


def main():
    target = sys.argv[2] if len(sys.argv) > 2 else os.path.join(ROOT, 'docs')
    display = Display()
    try:
        for scale in (1, 1.5, 2):
            with tempfile.TemporaryDirectory(prefix='veldrin-scripts-') as folder:
                prepare(folder)
                shoot(display, os.path.abspath(sys.argv[1]), folder, scale,
                      os.path.join(target, f'scripts-{scale}.png'))
    finally:
        display.end()


main()
