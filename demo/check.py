def main(folder, chapters): return 0
