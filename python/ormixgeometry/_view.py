"""Entities shown in notebooks."""

import html

from . import _core


class View:
    """A page that a notebook shows in a frame; `write(path)` makes a file of it."""

    def __init__(self, page, height):
        self.page = page
        self.height = height

    def _repr_html_(self):
        # The frame keeps styles and scripts of the page apart from those of the notebook.
        return (
            f'<iframe srcdoc="{html.escape(self.page)}" width="100%" height="{self.height}" '
            'style="border:0" sandbox="allow-scripts" title="entities"></iframe>'
        )

    def write(self, path):
        """Write the page to a file."""
        with open(path, "w", encoding="utf-8") as file:
            file.write(self.page)


def view(*entities, title="Entities", height=480):
    """Show entities and lists of them in a notebook: planar ones as a picture, spatial ones in a scene that turns.

    >>> shown = view(Circle2d((0, 0), 1))
    >>> shown._repr_html_().startswith('<iframe')
    True
    """
    return View(_core.to_html(*entities, title=title), int(height))
