"""What the scripts of this folder share: building, running and telling in Markdown."""
