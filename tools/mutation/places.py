"""Finds what can be mutated in the project's sources, with clang's syntax tree."""

import re
import sys
from dataclasses import dataclass
from pathlib import Path

from clang import cindex
from clang.cindex import CursorKind as K
from clang.cindex import TypeKind as T

INTEGERS = {T.CHAR_U, T.UCHAR, T.USHORT, T.UINT, T.ULONG, T.ULONGLONG, T.CHAR_S, T.SCHAR, T.SHORT,
            T.INT, T.LONG, T.LONGLONG}
NUMBERS = INTEGERS | {T.FLOAT, T.DOUBLE}
ORDER = {'<': '<=', '<=': '<', '>': '>=', '>=': '>'}
ARITHMETIC = {'+': '-', '-': '+', '*': '/', '/': '*', '%': '*'}
BITS = {'&': '|', '|': '&', '^': '&', '<<': '>>', '>>': '<<'}
EQUALITY = {'==', '!='}
LOGIC = {'&&', '||'}
STEPS = {'+=': '-=', '-=': '+=', '*=': '/=', '/=': '*=', '|=': '&=', '&=': '|='}
FUNCTIONS = {K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.FUNCTION_TEMPLATE,
             K.CONVERSION_FUNCTION}
# Not evaluated while the program runs, or not expressions at all.
SKIPPED = {K.STATIC_ASSERT, K.ENUM_DECL, K.PARM_DECL, K.TYPE_REF, K.NAMESPACE_REF, K.TEMPLATE_REF,
           K.TYPE_ALIAS_DECL, K.TYPEDEF_DECL, K.TEMPLATE_TYPE_PARAMETER,
           K.TEMPLATE_NON_TYPE_PARAMETER, K.USING_DIRECTIVE, K.USING_DECLARATION}
EMPTY = {'""', '{}', '0', 'nullptr', 'std::nullopt', 'false', 'true', '*this', 'std::string{}'}


@dataclass(frozen=True)
class Mutant:
    """A part of a file, `begin` to `end`, and what stands there instead."""
    begin: int
    end: int
    kind: str  # "expression"; "removed" and "returned" for statements
    text: str  # of the replacement


def bare(text):
    """One line without comments, for use inside of another."""
    text = re.sub(r'//[^"\n]*$', '', text, flags=re.M)
    return re.sub(r'\s+', ' ', text).strip()


class Finder:
    def __init__(self, source_root, paths):
        self.source_root = source_root
        self.paths = {str(source_root / p): p for p in paths}
        self.texts = {}
        self.found = {p: set() for p in paths}
        self.file = None
        self.loops = set()

    def read(self, name):
        if name not in self.texts:
            self.texts[name] = Path(name).read_bytes()
        return self.texts[name]

    def span(self, node):
        return node.extent.start.offset, node.extent.end.offset

    def text(self, begin, end):
        return self.read(self.file)[begin:end].decode()

    def text_of(self, node):
        return self.text(*self.span(node))

    def add(self, node, replacement, kind='expression'):
        begin, end = self.span(node)
        if kind != 'expression':  # statements with what ends them
            rest = self.text(end, end + 80)
            stripped = rest.lstrip()
            if not self.text(begin, end).endswith(';'):
                if not stripped.startswith(';'):
                    return
                end += len(rest) - len(stripped) + 1
        original = bare(self.text(begin, end))
        if kind == 'expression' and bare(replacement) == original:
            return
        if replacement == 'true' and (self.file, begin, end) in self.loops:
            return
        self.found[self.paths[self.file]].add(Mutant(begin, end, kind, bare(replacement)))

    # The whole file -------------------------------------------------------------------------

    def unit(self, path):
        arguments = ['-x', 'c++', '-std=c++20', f'-I{self.source_root}']
        unit = cindex.Index.create().parse(str(path), args=arguments)
        errors = [d for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
        if errors:
            sys.exit(f'{path}: clang does not understand it: {errors[0]}')
        for node in unit.cursor.get_children():
            name = node.location.file.name if node.location.file else None
            if name in self.paths:
                self.file = name
                self.visit(node, [])

    # One node, `parents` from the outside in --------------------------------------------------

    def visit(self, node, parents):
        kind = node.kind
        if kind in SKIPPED:
            return
        if kind in (K.VAR_DECL, K.FIELD_DECL):
            if self.is_constant(node, parents):
                return
            for child in node.get_children():
                if self.span(child)[0] > node.location.offset:
                    self.visit(child, parents + [node])
            return
        if kind == K.CASE_STMT:
            for child in list(node.get_children())[1:]:
                self.visit(child, parents + [node])
            return
        self.statement(node, parents)
        self.expression(node, parents)
        # What stands in front of a function's name is its type.
        begin = node.location.offset if kind in FUNCTIONS else 0
        for child in node.get_children():
            if self.span(child)[0] >= begin:
                self.visit(child, parents + [node])

    def is_constant(self, node, parents):
        # Of several that are declared at once, the first says it.
        declared = parents[-1] if parents and parents[-1].kind == K.DECL_STMT else node
        begin = declared.extent.start.offset
        return 'constexpr' in self.text(begin, max(node.location.offset, begin))

    # Statements -------------------------------------------------------------------------------

    def statement(self, node, parents):
        kind = node.kind
        parent = parents[-1] if parents else None
        if kind == K.RETURN_STMT:
            self.returned(node, parents)
        elif kind in (K.BREAK_STMT, K.CONTINUE_STMT):
            self.add(node, '', 'removed')
        elif parent is not None and kind.is_expression() and self.is_statement_place(node, parent):
            if self.inner(node).kind != K.CXX_THROW_EXPR or not self.never_returns(parents):
                self.add(node, '', 'removed')
        if kind in (K.IF_STMT, K.WHILE_STMT):
            condition = self.in_parentheses(node)
            self.condition(condition, loop=kind == K.WHILE_STMT)
        elif kind == K.FOR_STMT:
            self.condition(self.between_semicolons(node), loop=True)
        elif kind == K.DO_STMT:
            self.condition(list(node.get_children())[-1], loop=True)
        elif kind == K.CONDITIONAL_OPERATOR:
            self.condition(next(node.get_children()), loop=False)

    def never_returns(self, parents):
        function = next((p for p in parents if p.kind in FUNCTIONS), None)
        return function is not None and 'noreturn' in self.text(
            max(0, function.extent.start.offset - len('[[noreturn]] ')), function.location.offset)

    def is_statement_place(self, node, parent):
        if parent.kind in (K.COMPOUND_STMT, K.DEFAULT_STMT, K.CASE_STMT):
            return True
        if parent.kind == K.IF_STMT:
            closing = self.closing_parenthesis(parent)
            return closing is not None and self.span(node)[0] > closing
        if parent.kind in (K.FOR_STMT, K.WHILE_STMT, K.CXX_FOR_RANGE_STMT):
            return list(parent.get_children())[-1] == node
        return False

    def returned(self, node, parents):
        children = list(node.get_children())
        if not children:
            self.add(node, '', 'removed')
            return
        function = next((p for p in reversed(parents) if p.kind in FUNCTIONS | {K.LAMBDA_EXPR}), None)
        if function is None or function.kind == K.LAMBDA_EXPR:
            return
        result = function.result_type.get_canonical()
        if result.kind in (T.BOOL, T.LVALUEREFERENCE, T.VOID) or 'auto' in function.result_type.spelling:
            return
        if bare(self.text_of(children[0])) in EMPTY:
            return
        self.add(node, 'return {};', 'returned')

    # Conditions -------------------------------------------------------------------------------

    def tokens(self, node):
        return [(t.spelling, t.extent.start.offset) for t in node.get_tokens()]

    def closing_parenthesis(self, node):
        depth = 0
        for spelling, offset in self.tokens(node):
            if spelling == '(':
                depth += 1
            elif spelling == ')':
                depth -= 1
                if depth == 0:
                    return offset
        return None

    def in_parentheses(self, node):
        closing = self.closing_parenthesis(node)
        inside = [c for c in node.get_children() if self.span(c)[1] <= closing]
        return inside[-1] if inside and inside[-1].kind.is_expression() and \
            all(c.kind != K.VAR_DECL for c in inside) else None

    def between_semicolons(self, node):
        depth, places = 0, []
        for spelling, offset in self.tokens(node):
            depth += spelling in '({' and spelling != ''
            depth -= spelling in ')}' and spelling != ''
            if spelling == ';' and depth == 1:
                places.append(offset)
            if len(places) == 2:
                break
        return next((c for c in node.get_children()
                     if places[0] < self.span(c)[0] < places[1]), None)

    def condition(self, node, loop):
        """What decides is always so, or never. A loop that never ends tells nothing new."""
        if node is None:
            return
        text = bare(self.text_of(node))
        if text in ('true', 'false'):
            return
        operator = self.logical(node)
        if loop:
            self.loops.add((self.file, *self.span(node)))
        if operator != '&&' and not loop:
            self.add(node, 'true')
        if operator != '||':
            self.add(node, 'false')

    def inner(self, node):
        """Without implicit casts and parentheses."""
        while node.kind in (K.UNEXPOSED_EXPR, K.PAREN_EXPR):
            children = list(node.get_children())
            if len(children) != 1:
                break
            node = children[0]
        return node

    def logical(self, node):
        node = self.inner(node)
        if node.kind == K.BINARY_OPERATOR:
            operator = self.operator(node)[0]
            if operator in LOGIC:
                return operator
        return None

    # Expressions ------------------------------------------------------------------------------

    def operator(self, node):
        left, right = list(node.get_children())
        after, before = self.span(left)[1], self.span(right)[0]
        between = bare(self.text(after, before))
        return between, left, right

    def expression(self, node, parents):
        kind = node.kind
        if kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR):
            self.binary(node)
        elif kind == K.UNARY_OPERATOR:
            self.unary(node)
        elif kind == K.INTEGER_LITERAL or kind == K.FLOATING_LITERAL:
            self.number(node)
        elif kind == K.CHARACTER_LITERAL:
            text = self.text_of(node)
            self.add(node, f'static_cast<decltype({text})>({text} + 1)')
        elif kind == K.CXX_BOOL_LITERAL_EXPR:
            self.add(node, 'false' if self.text_of(node) == 'true' else 'true')
        elif kind == K.DECL_REF_EXPR:
            self.named_constant(node)
        elif kind == K.CALL_EXPR:
            self.call(node)
        elif kind == K.UNEXPOSED_EXPR and node.type.get_canonical().kind == T.BOOL:
            self.unequal(node)

    def binary(self, node):
        operator, left, right = self.operator(node)
        a, b = self.text_of(left), self.text_of(right)
        if operator in LOGIC:
            fixed = 'true' if operator == '&&' else 'false'
            for side in (left, right):
                if self.logical(side) != operator:
                    self.add(side, fixed)
            return
        if operator in ORDER or operator in EQUALITY:
            if operator in ORDER:
                self.add(node, f'{a} {ORDER[operator]} {b}')
            self.add(node, 'true')
            self.add(node, 'false')
            return
        replacement = {**ARITHMETIC, **BITS, **STEPS}.get(operator)
        numeric = all(side.type.get_canonical().kind in NUMBERS for side in (left, right))
        if replacement and numeric:
            self.add(node, f'{a} {replacement} {b}')

    def unary(self, node):
        if self.text_of(node).startswith('!'):
            self.add(node, 'true')
            self.add(node, 'false')
        elif self.text_of(node).startswith('-'):
            self.add(node, self.text_of(next(node.get_children())))

    def number(self, node):
        text = self.text_of(node)
        if not text[:1].isdigit():
            return
        if node.kind == K.FLOATING_LITERAL:
            self.add(node, f'({text} + 1)')
            return
        self.add(node, f'({text} + 1)')
        if not re.fullmatch(r'0+[uUlL]*', text):
            self.add(node, re.sub(r'^[0-9a-fA-FxX\']+', '0', text))

    def named_constant(self, node):
        declaration = node.referenced
        if declaration is None or declaration.kind != K.VAR_DECL:
            return
        if node.type.get_canonical().kind not in NUMBERS or not declaration.location.file:
            return
        name = declaration.location.file.name
        if not name.startswith(str(self.source_root)):
            return
        text = self.read(name)[declaration.extent.start.offset:declaration.location.offset].decode()
        if 'constexpr' not in text:
            return
        own = self.text_of(node)
        self.add(node, f'static_cast<std::remove_cvref_t<decltype({own})>>({own} + 1)')

    def unequal(self, node):
        """`a != b` where only a == for them was written."""
        children = list(node.get_children())
        if len(children) == 1 and children[0].spelling == 'operator==' and \
                '!=' in self.text_of(node) and not self.text_of(node).startswith('!='):
            self.add(node, 'true')
            self.add(node, 'false')

    def call(self, node):
        name = node.spelling
        children = list(node.get_children())
        text = self.text_of(node)
        if text.startswith('!=') or name in ('operator==', 'operator!=') and '=' not in text:
            return  # the operator alone: a rewritten one, or a defaulted one
        if name in ('min', 'max') and text.startswith('std::'):
            other = 'max' if name == 'min' else 'min'
            self.add(node, text.replace(f'std::{name}', f'std::{other}', 1))
        elif name in ('operator+', 'operator-') and len(children) == 3:
            if 'basic_string' in node.type.get_canonical().spelling:
                return
            a, b = self.text_of(children[0]), self.text_of(children[2])
            self.add(node, f'{a} {"-" if name.endswith("+") else "+"} {b}')
        elif name in ('any_of', 'all_of', 'none_of') or \
                node.type.get_canonical().kind == T.BOOL and text:
            self.add(node, 'true')
            self.add(node, 'false')


def find(source_root, units, paths):
    """The mutants of the files `paths`, by path; `units` are the sources that are read for them."""
    finder = Finder(source_root, paths)
    for unit in units:
        finder.unit(source_root / unit)
    return {path: sorted(mutants, key=lambda m: (m.begin, -m.end, m.kind, m.text))
            for path, mutants in finder.found.items()}

