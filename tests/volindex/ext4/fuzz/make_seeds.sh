#!/bin/sh
# Fills the folder $1 with small volumes of many kinds, the first inputs of volindex_ext4_fuzz.
set -eu
PATH=$PATH:/usr/sbin:/sbin
seeds=$1
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$seeds" "$tree/a/b/c" "$tree/wide"
for i in 1 2 3 4 5 6 7 8 9 10 11 12; do
  echo data > "$tree/wide/a file with a name long enough to fill some blocks of entries $i"
done
ln "$tree/wide/a file with a name long enough to fill some blocks of entries 1" "$tree/a/b/another name"
ln -s target "$tree/a/b/c/link"

make() {
  name=$1
  shift
  truncate -s 256K "$seeds/$name"
  mke2fs -q -F -b 1024 -N 48 "$@" -d "$tree" "$seeds/$name"
}
make ext2 -t ext2
make ext2_no_file_type -t ext2 -O ^filetype
make ext4 -t ext4 -O ^has_journal,^metadata_csum,^resize_inode
make ext4_checksums -t ext4 -O ^has_journal,^resize_inode
make inline_data -t ext4 -I 512 -O ^has_journal,^metadata_csum,^resize_inode,inline_data
make meta_bg -t ext4 -O ^has_journal,^metadata_csum,^resize_inode,meta_bg
make bigalloc -t ext4 -C 2048 -O ^has_journal,^metadata_csum,^resize_inode,bigalloc
make hashed -t ext4 -O ^has_journal,^metadata_csum,^resize_inode
e2fsck -fyD "$seeds/hashed" > /dev/null || test $? -eq 1
