"""The exception of the package."""

from __future__ import annotations


class Error(ValueError):
    """An argument, a file or a combination of facts is refused.

    ``str()`` of it is a sentence that says what is wrong, and with what.

    Attributes
    ----------
    message_id : str or None
        The id of the library's message, such as
        ``"TorvaneTypes::general::InvalidDataTypeId"``; None for an error that is not the library's.
    arguments : tuple of str
        What the message was filled with.

    Examples
    --------
    >>> import tvtypes
    >>> try:
    ...     tvtypes.convert([1.5], "int12")
    ... except tvtypes.Error as error:
    ...     print(str(error)[:46])
    dtype 'int12' is not one of the built-in types
    """

    def __init__(
        self, sentence: str, message_id: str | None = None, arguments: tuple[str, ...] = ()
    ) -> None:
        super().__init__(sentence)
        self.message_id = message_id
        self.arguments = arguments

    def __reduce__(self):
        return type(self), (str(self), self.message_id, self.arguments)
