# Files of a package bear the time of its sources, not that of their installation.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +)
endif()
