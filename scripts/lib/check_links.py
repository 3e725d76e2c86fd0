"""Tells which links lead nowhere, of Markdown documents in the repository and of pages of a site.

Usage: check_links.py DOCUMENT...   a DOCUMENT ends with .md or .html; links to other hosts are not looked at
"""

import re
import sys
from pathlib import Path
from urllib.parse import unquote

LINK = re.compile(r'\]\(([^)\s]+)\)')
CODE = re.compile(r'^```.*?^```$|`[^`\n]*`', re.MULTILINE | re.DOTALL)
SCRIPT = re.compile(r'<script.*?</script>', re.DOTALL)
PAGE_CODE = re.compile(r'<div class="fragment">.*?</div><!-- fragment -->|<code>.*?</code>|<pre.*?</pre>', re.DOTALL)
ADDRESS = re.compile(r'(?:href|src)="([^"]+)"')
FOREIGN = re.compile(r'[a-z]+:')
LINK_IN_TEXT = re.compile(r'\[[^]<]*\]\([^)<]*\)')
HEADING = re.compile(r'^#+ (.*)$', re.MULTILINE)


def text_of(document):
    """Gives a document without its code."""
    return CODE.sub('', document.read_text(encoding='utf-8'))


def anchors_of(document):
    """Gives the names by which links refer to the headings of a document."""
    text = re.sub(r'^```.*?^```$', '', document.read_text(encoding='utf-8'), flags=re.M | re.S)
    anchors = set()
    for heading in HEADING.findall(text):
        words = re.sub(r'[^\w\- ]', '', heading.lower())
        anchors.add(words.replace(' ', '-'))
    return anchors


def broken_links_of_page(page):
    """Gives the links of a page that lead to no file, and those that stayed Markdown."""
    text = SCRIPT.sub('', page.read_text(encoding='utf-8'))
    broken = [link for link in ADDRESS.findall(text)
              if not FOREIGN.match(link) and not (page.parent / unquote(link.partition('#')[0])).exists()]
    return broken + LINK_IN_TEXT.findall(PAGE_CODE.sub('', text))


def broken_links(document):
    """Gives the links of a document that lead nowhere."""
    broken = []
    for link in LINK.findall(text_of(document)):
        path, _, anchor = link.partition('#')
        if '://' in link or link.startswith('mailto:'):
            continue
        target = document.parent / path if path else document
        if not target.exists():
            broken.append(link)
        elif anchor and anchor not in anchors_of(target):
            broken.append(link)
    return broken


def main(names):
    status = 0
    for name in names:
        find = broken_links_of_page if name.endswith('.html') else broken_links
        for link in find(Path(name)):
            print(f'check-docs: {name}: {link} leads nowhere', file=sys.stderr)
            status = 1
    return status


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
