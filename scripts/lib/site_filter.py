"""Writes a Markdown document as Doxygen is to read it for the site.

Usage: site_filter.py DOCUMENT

In the repository links lead to files and folders and to headings of other documents. On the site there
are only the documents: a link to another one loses the heading, which has another name there, and of a
link to anything else the text remains, from which Doxygen links the names of headers itself.
"""

import re
import sys
from pathlib import Path

# Code, which stays as it is, or a link or picture with its text and its target.
PIECE = re.compile(r'(?P<code>^```.*?^```$|`[^`\n]*`)|'
                   r'(?P<picture>!?)\[(?P<text>[^]\n]*)\]\((?P<target>[^)\s]+)\)',
                   re.MULTILINE | re.DOTALL)


def of_the_site(piece):
    """Gives what stands for a piece of a document on the site."""
    target = piece['target']
    if piece['code'] or piece['picture'] or '://' in target or target.startswith('#'):
        return piece[0]
    path = target.partition('#')[0]
    return f'[{piece["text"]}]({path})' if path.endswith('.md') else piece['text']


def main():
    text = Path(sys.argv[1]).read_text(encoding='utf-8')
    sys.stdout.write(PIECE.sub(of_the_site, text))


if __name__ == '__main__':
    main()
