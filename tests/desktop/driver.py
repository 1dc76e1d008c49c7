"""What the tests of the desktop driver by itself share: its probe, which shows a window and tells in
lines what the driver reports."""

from desktop import OnDisplay, wait_for

WIDTH, HEIGHT = 100, 60


def colour(x, y):
    """As the probe paints it."""
    return (x * 2, y * 4, 100)


class Driver(OnDisplay):
    def open(self, x=200, y=150, scale=1):
        self.probe_lines = self.start_lines(self.probe, scale)
        self.probe_lines.expect('ready')
        self.probe_lines.ask(f'show {x} {y}')
        self.window = self.display.window('Probe � title')
        self.place = (x, y)
        inside = (int((x + 50) * scale), int((y + 30) * scale))
        wait_for(lambda: self.display.pixel(*inside)[2] == 100, 'the picture')

    def ask(self, *words, answer='done'):
        return self.probe_lines.ask(' '.join(str(word) for word in words), answer)

    def expect(self, line):
        return self.probe_lines.expect(line)

    def said_until_now(self):
        """What the driver has reported since the last answer."""
        self.ask('pointer', answer='at')
        return self.probe_lines.heard

    def focus(self):
        self.display.tool('windowfocus', '--sync', self.window)
        self.said_until_now()

    def pressed(self, *keys):
        """What pressing and releasing keys brings, one after the other."""
        self.display.tool('key', '--delay', '5', *keys, 'F12')
        self.expect('up 123')
        return [line for line in self.probe_lines.heard if ' 123 ' not in line]
