#!/usr/bin/env bash
# Runs the Khronos glTF validator over files: validate-gltf.sh FOLDER FILE...
# FOLDER keeps the validator, which npm fetches once. Ends with 0 when no file has an error or a
# warning, with 1 when one has, and with 77 when the validator can't be had.
set -euo pipefail
folder=$1
shift
command -v node >/dev/null && command -v npm >/dev/null || { echo "node and npm are not installed" >&2; exit 77; }
if [[ ! -d $folder/node_modules/gltf-validator ]]; then
  mkdir -p "$folder"
  timeout 60 npm install --prefix "$folder" --no-audit --no-fund --silent gltf-validator@2.0.0-dev.3.10 >&2 ||
    { echo "npm can't reach its registry" >&2; exit 77; }
fi
NODE_PATH=$folder/node_modules exec node -e '
const fs = require("fs");
const validator = require("gltf-validator");
(async () => {
  let bad = 0;
  for (const file of process.argv.slice(1)) {
    const report = await validator.validateBytes(new Uint8Array(fs.readFileSync(file)));
    const { numErrors, numWarnings } = report.issues;
    console.log(`${file}: ${numErrors} errors, ${numWarnings} warnings`);
    for (const m of report.issues.messages)
      if (m.severity < 2) console.log(`  ${m.code} ${m.pointer}: ${m.message}`);
    bad += numErrors + numWarnings;
  }
  process.exit(bad ? 1 : 0);
})();
' "$@"
