def gallery(tour): pass
