# The package's version is the C library's (CMakeLists.txt project()).
__version__ = "6.0.0"
