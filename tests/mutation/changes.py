"""The small changes that can be made to one C++ source: operators, constants, conditions."""
import re
from typing import NamedTuple


class Change(NamedTuple):
    start: int      # place in the text
    end: int
    new: str        # what stands there instead
    line: int       # from 1


SWAPS = {
    '<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==', '&&': '||', '||': '&&',
    '+': '-', '-': '+', '*': '/', '/': '*', '+=': '-=', '-=': '+=', '<<': '>>', '>>': '<<',
}
WORDS = {'true': 'false', 'false': 'true', 'std::min': 'std::max', 'std::max': 'std::min',
         'break': 'continue', 'continue': 'break'}

BLANKED = re.compile(
    r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\''
    r'|^[ \t]*#(?:\\\n|[^\n])*|\bstatic_assert\b[^;]*;|\btemplate\s*<[^\n]*>', re.S | re.M)
# The formatter puts blanks around operators of two operands and none around those of types.
OPERATOR = re.compile(r'(?<=[\w)\]] )(?:' + '|'.join(
    re.escape(op) for op in sorted(SWAPS, key=len, reverse=True)) + r')(?=\s)')
WORD = re.compile(r'(?<![\w:])(?:' + '|'.join(WORDS) + r')\b')
STEP = re.compile(r'(?:\+\+|--)(?=\w)|(?<=\w)(?:\+\+|--)')
NUMBER = re.compile(r'(?<![\w.\'])(?:0x[0-9A-Fa-f]+|\d+(?:\.\d*)?(?:[eE][-+]?\d+)?)(?=[fuULl]*\b|[^\w.])')
NOT = re.compile(r'(?<=[(\s])!(?=[A-Za-z(])')
IF = re.compile(r'\bif \(')


def blanked(text):
    """The text with blanks for what is not changed: comments, literals, what only the compiler reads."""
    return BLANKED.sub(lambda found: re.sub(r'[^\n]', ' ', found.group()), text)


def other_number(number):
    """A number close to it."""
    if number.lower().startswith('0x'):
        return hex(int(number, 16) + 1)
    if re.fullmatch(r'\d+', number):
        return str(int(number) + 1)
    value = float(number)
    changed = repr(value * 1.05 if value else 1.0)
    return changed


def closing(text, opening):
    """Place of the bracket that closes the one at `opening`; -1 when there is none."""
    depth = 0
    for place in range(opening, len(text)):
        depth += {'(': 1, ')': -1}.get(text[place], 0)
        if depth == 0:
            return place
    return -1


def changes(text):
    """Every change of one source, in the order of their places."""
    code = blanked(text)
    found = []

    def add(start, end, new):
        found.append(Change(start, end, new, text.count('\n', 0, start) + 1))

    for match in OPERATOR.finditer(code):
        add(match.start(), match.end(), SWAPS[match.group()])
    for match in WORD.finditer(code):
        add(match.start(), match.end(), WORDS[match.group()])
    for match in STEP.finditer(code):
        add(match.start(), match.end(), '--' if match.group() == '++' else '++')
    for match in NUMBER.finditer(code):
        add(match.start(), match.end(), other_number(match.group()))
    for match in NOT.finditer(code):
        add(match.start(), match.end(), '')
    for match in IF.finditer(code):
        end = closing(code, match.end() - 1)
        condition = text[match.end():end]
        if end > 0 and ';' not in condition:
            add(match.end(), end, f'!({condition})')
    return sorted(found)


def changed(text, change):
    return text[:change.start] + change.new + text[change.end:]
