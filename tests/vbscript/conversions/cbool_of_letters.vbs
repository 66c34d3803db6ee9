Print CBool("yes") ' error: 13
