#!/usr/bin/env python3
"""The tooltip in the finished program: where it comes up, what it looks like, and when it goes."""

from desktop import SCREEN, main, wait_for
from player import LEFT, NEXT, PLAY, STOP, TOP, WIDTH, Player

HEIGHT = 23  # of the skin's frame
BELOW = 24
EXIT = (275, 17)
TEXT_COLOUR = (192, 192, 255)


class Tooltip(Player):
    def tips(self):
        """Left, top, width, height of each."""
        return self.display.places_of(self.player, self.window)

    def tips_at(self, point):
        """With the pointer there. It moves each time, since looking takes as long as a tooltip."""
        self.point_at((point[0] + 1, point[1]))
        self.point_at(point)
        return self.tips()

    def tip_at(self, point):
        return wait_for(lambda: self.tips_at(point), f'the tooltip at {point}')[0]

    def test_it_stands_below_the_pointer_and_follows(self):
        self.open()
        x, y = LEFT + PLAY[0], TOP + PLAY[1]

        def is_below():
            left, _, width, _ = tip = self.tip_at(PLAY)
            return abs(left + width / 2 - x) <= 1 and tip
        left, top, width, height = wait_for(is_below, 'the tooltip in the middle')
        self.assertEqual((top, height), (y + BELOW, HEIGHT))
        near = PLAY[0] + 4, PLAY[1] + 2  # even: a half goes to the even side
        wait_for(lambda: self.tips_at(near) == [(left + 4, top + 2, width, height)],
                 'it to follow')

    def test_it_goes_by_itself(self):
        self.open()
        self.tip_at(PLAY)
        wait_for(lambda: not self.tips(), 'it to go')
        self.tip_at(PLAY)

    def test_each_control_has_its_own_text(self):
        self.open()
        self.assertNotEqual(self.tip_at(PLAY)[2], self.tip_at(NEXT)[2])

    def picture_at(self, point, tip):
        self.tips_at(point)
        picture = self.display.part(*tip)
        return picture if picture.has_colours() else None

    def test_it_is_a_line_on_a_frame(self):
        self.open()
        tip = self.tip_at(STOP)
        picture = wait_for(lambda: self.picture_at(STOP, tip), 'its picture')
        _, _, width, height = tip
        colours = {picture.pixel(x, y) for x in range(width) for y in range(height)}
        self.assertIn(TEXT_COLOUR, colours)
        # The frame goes all around: no corner is as black as the screen.
        for x in 0, width - 1:
            for y in 0, height - 1:
                self.assertNotEqual(picture.pixel(x, y), (0, 0, 0))

    def test_it_takes_neither_the_focus_nor_a_place_in_the_task_bar(self):
        self.open()
        active = wait_for(self.display.known.active, 'the window to be active')
        self.tip_at(PLAY)
        self.assertEqual(self.display.known.active(), active)
        self.assertEqual(self.display.listed(), [self.window])

    def test_it_stays_on_the_screen(self):
        self.write_settings(X=SCREEN[0] - WIDTH)
        self.open()
        left, _, width, _ = self.tip_at(EXIT)
        self.assertEqual(left + width, SCREEN[0])

    def test_it_is_magnified_as_all_else(self):
        self.open()
        width = self.tip_at(PLAY)[2]
        self.player.kill()
        self.player.wait()
        self.open(scale=2)
        tip = self.tip_at((2 * PLAY[0], 2 * PLAY[1]))
        self.assertEqual(tip[2:], (2 * width, 2 * HEIGHT))
        self.assertEqual(tip[1], self.place[1] + 2 * (PLAY[1] + BELOW))


main()
