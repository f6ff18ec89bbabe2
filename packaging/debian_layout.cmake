# Run by CPack on what is about to be packed: Debian keeps games in /usr/games.
set(root ${CPACK_TEMPORARY_DIRECTORY}/usr)
file(MAKE_DIRECTORY ${root}/games)
file(RENAME ${root}/bin/fento-lira-master ${root}/games/fento-lira-master)
file(REMOVE_RECURSE ${root}/bin)
