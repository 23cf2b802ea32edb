# Completion of quorlin-convert for fish.
set -g __quorlin_sources doc docx docm dot dotx dotm rtf odt ott fodt sxw txt html htm xhtml wpd \
    xls xlsx xlsm xlsb xlt xltx xltm ods ots fods sxc csv \
    ppt pptx pptm pps ppsx ppsm pot potx potm odp otp fodp sxi \
    pdf ps eps prn png jpg jpeg gif bmp tif tiff svg wmf emf odg otg fodg

# The shell's own offer of files, without those that are not taken.
function __quorlin_files
    set -l begun (commandline -ct | string replace -r '^--[^=]*=' '')
    complete -C "__quorlin_no_command $begun" |
        string match -rei '(?:/|\.(?:'(string join '|' $argv)'))(?:\t.*)?$'
end

complete -c quorlin-convert -f
complete -c quorlin-convert -a "(__quorlin_files $__quorlin_sources)"
complete -c quorlin-convert -s q -l quality -x -a "(quorlin-settings values Quality 2>/dev/null)" -d "Job options of this name"
complete -c quorlin-convert -s m -l merge -x -a "(__quorlin_files pdf)" -d "Join all documents into this PDF"
complete -c quorlin-convert -s o -l output -x -a "(__fish_complete_directories)" -d "Put the results into this folder"
complete -c quorlin-convert -s T -l files-from -r -F -d "Read names of documents from a file"
complete -c quorlin-convert -s 0 -l null -d "Those names end with a zero byte"
complete -c quorlin-convert -s j -l jobs -x -a "1 2 4 8" -d "Documents at once, at the most"
complete -c quorlin-convert -s n -l dry-run -d "Tell what would be done"
complete -c quorlin-convert -s s -l summary -d "Write a table at the end"
complete -c quorlin-convert -l json -r -F -d "Write a report as JSON"
complete -c quorlin-convert -l timeout -x -d "Longest time for a document"
complete -c quorlin-convert -l memory -x -d "Memory that one document may need, in MiB"
complete -c quorlin-convert -l stall -x -d "Longest time without any progress"
complete -c quorlin-convert -l quiet -d "Say nothing but what failed"
complete -c quorlin-convert -s v -l verbose -d "Show what the PDF component logs"
complete -c quorlin-convert -s h -l help -d "Show help and end"
complete -c quorlin-convert -l version -d "Show the version and end"
