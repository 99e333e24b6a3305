"""How Sphinx makes the site of the pages that stage.py has put together."""
import os
import pathlib

here = pathlib.Path(__file__).parent
project = "ORMIXGeometry"
version = release = os.environ.get("ORMIX_VERSION", "")
html_title = f"ORMIXGeometry {version}"
extensions = ["myst_parser", "sphinx_inline_tabs", "sphinx_copybutton"]
myst_heading_anchors = 4
myst_number_code_blocks = []
html_theme = "furo"
html_static_path = [str(here / "static")]
html_css_files = ["site.css"]
html_show_copyright = False
html_show_sphinx = False
html_copy_source = False
html_theme_options = {
    "light_css_variables": {"color-brand-primary": "#1f5f8b", "color-brand-content": "#1f5f8b"},
    "dark_css_variables": {"color-brand-primary": "#7fb8dc", "color-brand-content": "#7fb8dc"},
}
copybutton_exclude = ".linenos, .gp, .go"
highlight_language = "none"
