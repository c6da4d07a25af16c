#!/usr/bin/env python3
"""Runs the command-line host with --format sarif --all on a bundled example
and validates its output against the SARIF 2.1.0 schema.
usage: sarif_schema_test.py TOOL SCHEMA SOURCE_DIR"""
import json
import os
import subprocess
import sys
import tempfile

import jsonschema

tool, schema_path, source = sys.argv[1:4]
with tempfile.TemporaryDirectory() as work:
    package = os.path.join(work, "remote-guide.zip")
    subprocess.run([os.path.join(source, "scripts/package-app.py"),
                    os.path.join(source, "examples/remote-guide/app"), "remote-guide/www", package], check=True)
    run = subprocess.run([tool, "--format", "sarif", "--all", "--work-dir", work,
                          "--db", os.path.join(source, "data/APIAnalEngineDB.xml"), package],
                         capture_output=True, text=True)
if run.returncode != 1:
    sys.exit(f"exit status {run.returncode}: {run.stderr}")
log = json.loads(run.stdout)
with open(schema_path) as f:
    schema = json.load(f)
validator = jsonschema.validators.validator_for(schema)
validator.check_schema(schema)
errors = list(validator(schema).iter_errors(log))
for error in errors:
    print(f"{list(error.absolute_path)}: {error.message}")
if errors or not log["runs"][0]["results"]:
    sys.exit("the SARIF log does not validate, or has no result")
print(f"valid SARIF ({validator.__name__}), {len(log['runs'][0]['results'])} result(s)")
