"""check_info_plist.py INFO_PLIST VERSION MINIMUM_SYSTEM ID SERVICES_OBJECT: fails with what is wrong."""

import plistlib
import sys

plist, version, minimum, identifier, services = sys.argv[1:]
with open(plist, "rb") as file:
    info = plistlib.load(file)
with open(services, "rb") as file:
    compiled = file.read()

expected = {
    "CFBundleIdentifier": identifier,
    "CFBundleName": "Stowlark",
    "CFBundleExecutable": "Stowlark",
    "CFBundlePackageType": "APPL",
    "CFBundleIconFile": "Stowlark.icns",
    "CFBundleShortVersionString": version,
    "CFBundleVersion": version,
    "LSMinimumSystemVersion": minimum,
    "NSHighResolutionCapable": True,
    "NSPrincipalClass": "NSApplication",
}
found = {key: info.get(key) for key in expected}
assert found == expected, found

[service] = info["NSServices"]
assert service["NSMenuItem"] == {"default": "Extract with Stowlark"}
assert service["NSPortName"] == "Stowlark" and "NSRequiredContext" in service
method = f"-[ServiceProvider {service['NSMessage']}:userData:error:]"
assert method.encode() in compiled, f"{method} is not what was compiled"

types = [set(document["LSItemContentTypes"]) for document in info["CFBundleDocumentTypes"]]
for uti in ("public.zip-archive", "org.gnu.gnu-zip-archive", "org.7-zip.7-zip-archive", "com.rarlab.rar-archive",
            "com.apple.disk-image-udif"):
    assert len([each for each in types if uti in each]) == 1, uti
assert set.union(*types) <= set(service["NSSendFileTypes"])

extensions = {}
for declared in info["UTImportedTypeDeclarations"]:
    assert "public.archive" in declared["UTTypeConformsTo"]
    extensions[declared["UTTypeIdentifier"]] = declared["UTTypeTagSpecification"]["public.filename-extension"]
assert extensions == {"org.7-zip.7-zip-archive": ["7z"], "com.rarlab.rar-archive": ["rar"]}, extensions
