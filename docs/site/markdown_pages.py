"""What the scripts of the pages know of Markdown, as forges read it: fenced blocks, links, anchors of headings."""
import re
from dataclasses import dataclass

FENCE = re.compile(r"^( *)(`{3,})(.*)$")
LINK = re.compile(r"(?<!\\)(!?)\[((?:[^\[\]]|\[[^\[\]]*\]|!\[[^\[\]]*\]\([^()]*\))*)\]\(([^()\s]+)\)")
CODE = re.compile(r"(`+)(?!`).+?(?<!`)\1(?!`)", re.DOTALL)


@dataclass
class Block:
    """A fenced block: its language, text, and the line it begins with (from 1) and ends with."""
    language: str
    text: str
    line: int
    last_line: int


def blocks(text):
    """The fenced blocks of a page, in order."""
    found, start, fence = [], None, ""
    lines = text.split("\n")
    for number, line in enumerate(lines, 1):
        match = FENCE.match(line)
        if start is None and match:
            start, fence, indent, language = number, match[2], len(match[1]), match[3].strip()
        elif start is not None and match and not match[3].strip() and len(match[2]) >= len(fence):
            body = "".join(part[indent:] + "\n" for part in lines[start:number - 1])
            found.append(Block(language, body, start, number))
            start = None
    return found


def paragraphs(text):
    """The runs of lines without blank ones, outside of fenced blocks: the number of the first line, and the text."""
    fenced = {number for block in blocks(text) for number in range(block.line, block.last_line + 1)}
    found = []
    for number, line in enumerate(text.split("\n"), 1):
        if number in fenced or not line.strip():
            found.append(None)
        elif found and found[-1] is not None:
            found[-1][1] += "\n" + line
        else:
            found.append([number, line])
    return [(run[0], run[1]) for run in found if run is not None]


def map_links(text, change):
    """The page with change(target, is_image, number of the line) in place of the target of each link, also of links
    around images."""
    lines = text.split("\n")
    for first, paragraph in paragraphs(text):
        codes = []

        def hide(code):
            """What stands for code, in which there are no links: without brackets, and as many lines."""
            codes.append(code[0])
            return f"\0{len(codes) - 1}" + "\n" * code[0].count("\n") + "\0"

        hidden = CODE.sub(hide, paragraph)

        def replace(match, offset=0):
            start = offset + match.start()
            number = first + hidden.count("\n", 0, start)
            label = LINK.sub(lambda inner: replace(inner, start), match[2])
            return f"{match[1]}[{label}]({change(match[3], match[1] == '!', number)})"

        changed = re.sub("\0(\\d+)\n*\0", lambda mark: codes[int(mark[1])], LINK.sub(replace, hidden))
        lines[first - 1:first - 1 + paragraph.count("\n") + 1] = changed.split("\n")
    return "\n".join(lines)


def links(text):
    """The targets of all links and images of a page, with the numbers of their lines."""
    found = []
    map_links(text, lambda target, is_image, number: found.append((number, target)) or target)
    return found


def anchors(text):
    """The anchors that a forge gives to the headings of a page."""
    found = []
    lines = [line for _, paragraph in paragraphs(text) for line in paragraph.split("\n")]
    for heading in filter(None, (re.match(r"#{1,6} +(.*?) *#*$", line) for line in lines)):
        plain = LINK.sub(lambda match: match[2], heading[1]).replace("`", "")
        slug = re.sub(r"[^\w\- ]", "", plain.lower()).replace(" ", "-")
        repeats = sum(1 for other in found if re.fullmatch(re.escape(slug) + r"(-\d+)?", other))
        found.append(f"{slug}-{repeats}" if slug in found else slug)
    return found
