"""Families: the class templates of the library, whose classes differ by the type of their coordinates."""


class Family(type):
    """The type of `Circle2d` and its like: called with `dtype=`, it makes an object of one of its classes.

    `Circle2d["float32"]` is one of these classes; every object of any of them is an instance of `Circle2d`.
    """

    def __call__(cls, *args, dtype="float64", **kwargs):
        return cls[dtype](*args, **kwargs)

    def __getitem__(cls, dtype):
        try:
            return cls._classes[dtype]
        except (KeyError, TypeError):
            pass
        import numpy

        name = numpy.dtype(dtype).name
        if name not in cls._classes:
            raise TypeError(f"{cls.__name__} has no dtype {name}; it has {', '.join(cls._classes)}")
        return cls._classes[name]

    def __instancecheck__(cls, instance):
        return isinstance(instance, tuple(cls._classes.values()))

    def __subclasscheck__(cls, subclass):
        return issubclass(subclass, tuple(cls._classes.values()))

    def __getattr__(cls, name):
        if name.startswith("_"):
            raise AttributeError(name)
        return getattr(cls._classes["float64"], name)

    def __dir__(cls):
        return dir(cls._classes["float64"])

    def __repr__(cls):
        return f"<family 'ormixgeometry.{cls.__name__}' of {', '.join(cls._classes)}>"


def make_families(core):
    """The families of a module by name, from the table of their classes."""
    families = {}
    for name, classes in core._families.items():
        members = {"_classes": classes, "__doc__": classes["float64"].__doc__, "__module__": "ormixgeometry"}
        families[name] = Family(name, (), members)
    return families
