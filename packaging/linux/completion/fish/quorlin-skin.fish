# Completion of quorlin-skin for fish.
complete -c quorlin-skin -f
complete -c quorlin-skin -a "(quorlin-settings values Skin 2>/dev/null)"
complete -c quorlin-skin -l language -x -a "(quorlin-settings values Language 2>/dev/null)" -d "Texts in this language"
complete -c quorlin-skin -l folder -x -a "(__fish_complete_directories)" -d "Folder with skins and language"
complete -c quorlin-skin -l working -d "As in the middle of a conversion"
complete -c quorlin-skin -l empty -d "Without documents"
complete -c quorlin-skin -l about -d "The about box alone"
complete -c quorlin-skin -l screenshot -r -F -d "Save a picture and end"
complete -c quorlin-skin -s h -l help -d "Show help and end"
complete -c quorlin-skin -l help-all -d "Show help with the options of the toolkit and end"
complete -c quorlin-skin -s v -l version -d "Show the version and end"
