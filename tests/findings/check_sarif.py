"""check_sarif.py SCHEMA LOG: what of a SARIF log does not fit the schema; silent and 0 when all does."""
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as schema, open(sys.argv[2], encoding="utf-8") as log:
    faults = list(jsonschema.Draft4Validator(json.load(schema)).iter_errors(json.load(log)))
for fault in faults:
    print(list(fault.absolute_path), fault.message)
sys.exit(1 if faults else 0)
