import sys
from pathlib import Path

# The tests import reference.py from this directory.
sys.path.insert(0, str(Path(__file__).resolve().parent))
