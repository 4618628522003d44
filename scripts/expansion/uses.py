"""How a model uses its names, found without running it; and the faults that this shows."""
import dataclasses

from grammar import Call, Extent, Fault, If, Label, Operation, Put, Reference, Sum, Text


@dataclasses.dataclass
class Use:
    line: int          # the first that uses the name
    looped: bool = False
    counted: bool = False
    arguments: int | None = None


class Survey:
    """Walks through the statements with the sets that are looped over at each place."""

    def __init__(self, statements):
        self.uses, self.line, self.controlled = {}, 0, []
        self.block(statements)

    def use(self, name):
        return self.uses.setdefault(name, Use(self.line))

    def use_set(self, name):
        self.use(name).looped = True

    def use_with(self, name, arguments):
        use = self.use(name)
        if use.arguments not in (None, arguments):
            raise Fault(f"{name} has {arguments} arguments here, {use.arguments} before", self.line)
        else:
            use.arguments = arguments

    def block(self, statements):
        for statement in statements:
            self.line = statement.line
            if isinstance(statement, Put):
                for item in statement.items:
                    self.visit(item)
            elif isinstance(statement, If):
                self.visit(statement.condition)
                self.block(statement.body)
            else:
                self.within(statement.domain, lambda: self.block(statement.body))

    def within(self, domain, walk):
        for name in domain.sets:
            if name in self.controlled:
                raise Fault(f"{name} is looped over already", self.line)
            self.use_set(name)
            self.controlled.append(name)
        if domain.condition is not None:
            self.visit(domain.condition)
        walk()
        del self.controlled[-len(domain.sets):]

    def visit(self, node):
        if isinstance(node, (Operation, Call)):
            for part in node.parts:
                self.visit(part)
        elif isinstance(node, Reference):
            self.use_with(node.name, len(node.places))
            for place in node.places:
                self.place(place)
        elif isinstance(node, Sum):
            self.within(node.domain, lambda: self.visit(node.body))
        elif isinstance(node, Extent):
            self.extent(node)
        elif isinstance(node, Label):
            self.place(node.place)

    def extent(self, node):
        if node.name == "CARD":
            self.use(node.set).counted = True
        else:
            self.use_set(node.set)
            self.control(node.set)

    def place(self, place):
        if place.element is not None:
            return
        self.use_set(place.name)
        self.control(place.name)
        if place.steps is not None:
            self.visit(place.steps)

    def control(self, name):
        if name not in self.controlled:
            raise Fault(f"{name} is not looped over", self.line)


def declared_names(statements):
    """The names of variables: their PUT begins with the name alone, without a label and a colon."""
    found = set()
    for statement in statements:
        if isinstance(statement, Put):
            texts = [item.text for item in statement.items if isinstance(item, Text)]
            if texts and texts[0].strip("+ .") and ":" not in texts[0]:
                found.add(texts[0].strip().upper())
        else:
            found |= declared_names(statement.body)
    return found
