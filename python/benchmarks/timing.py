"""Times of calls, for the scripts beside it."""

import time


def least(call, repeats=5):
    """The least CPU time of several calls, in seconds, and what the last of them returned."""
    times = []
    for _ in range(repeats):
        begin = time.process_time()
        result = call()
        times.append(time.process_time() - begin)
    return min(times), result


def report(rows):
    """Print a table of (what, seconds here, peer, seconds there)."""
    print(f"| {'What':58} | ormixgeometry | {'Peer':14} | its time | ratio |\n|---|---|---|---|---|")
    for what, ours, peer, theirs in rows:
        if theirs is None:
            print(f"| {what:58} | {1e3 * ours:10.2f} ms | {peer:14} | | |")
        else:
            print(f"| {what:58} | {1e3 * ours:10.2f} ms | {peer:14} | {1e3 * theirs:.2f} ms | {theirs / ours:.1f} |")
