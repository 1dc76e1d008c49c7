"""From true colour to a palette: exact where the colours fit, median cut where they do not."""


def _widest(group):
    """The channel along which the colours of the group differ most, and by how much."""
    spans = [max(c[i] for c in group) - min(c[i] for c in group) for i in range(3)]
    channel = max(range(3), key=lambda i: spans[i])
    return channel, spans[channel]


def _weight(group, counts, surfaces):
    """How much the picture gains when the group is split: by its span and, less, its size."""
    return _widest(group)[1] * sum(counts[c] for c in group) ** surfaces


def _middle(group, counts):
    """The group's mean colour, weighted by how often each colour occurs."""
    total = sum(counts[c] for c in group)
    return tuple((2 * sum(c[i] * counts[c] for c in group) + total) // (2 * total)
                 for i in range(3))


def _split(group):
    """Two halves of the group, cut in the middle of its widest channel."""
    channel, _ = _widest(group)
    low, high = min(c[channel] for c in group), max(c[channel] for c in group)
    cut = (low + high) / 2
    return [c for c in group if c[channel] <= cut], [c for c in group if c[channel] > cut]


def adaptive(rows, size, pinned=(), surfaces=0.25):
    """Rows of colours as (palette, rows of indices); pinned colours stay exact.

    The greater `surfaces`, the more go to what covers much of the picture, and the fewer to edges.
    """
    counts = {}
    for row in rows:
        for colour in row:
            counts[colour] = counts.get(colour, 0) + 1
    fixed = sorted(c for c in counts if c in pinned)
    free = sorted(c for c in counts if c not in pinned)
    groups = [[c] for c in free]
    if len(fixed) + len(free) > size:
        groups, weights = [free], [_weight(free, counts, surfaces)]
        while len(groups) < size - len(fixed):
            widest = weights.index(max(weights))
            groups[widest:widest + 1] = halves = _split(groups[widest])
            weights[widest:widest + 1] = [_weight(half, counts, surfaces) for half in halves]
    palette, index = list(fixed), {c: i for i, c in enumerate(fixed)}
    for group in groups:
        for colour in group:
            index[colour] = len(palette)
        palette.append(_middle(group, counts))
    return palette, [[index[c] for c in row] for row in rows]


def nearest(rows, palette):
    """Rows of colours as indices into a palette chosen by hand."""
    found = {}

    def look(colour):
        if colour not in found:
            found[colour] = min(range(len(palette)), key=lambda i: sum(
                (palette[i][k] - colour[k]) ** 2 for k in range(3)))
        return found[colour]

    return [[look(c) for c in row] for row in rows]


def longer_runs(rows, palette, indices, tolerance, pinned=()):
    """The indices with runs drawn out to the right, where no channel is off by more than asked.

    Pinned colours are neither given up nor spread.
    """
    drawn = []
    for colours, line in zip(rows, indices):
        run, last = [], None
        for colour, index in zip(colours, line):
            if index != last and (last is None or colour in pinned or palette[last] in pinned
                                  or any(abs(a - b) > tolerance
                                         for a, b in zip(colour, palette[last]))):
                last = index
            run.append(last)
        drawn.append(run)
    return drawn
